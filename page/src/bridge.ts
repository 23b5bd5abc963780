import type { ActionData, ActionName } from './actions.js';
import type { EventOf } from './events.js';
import type { StoredValue } from './items.js';

/** The functions that every app has. A call with an argument of another type does nothing, and says nothing. */
export interface BuiltInFunctions {
    close(): void;
    setItem<Value>(key: string, value: Value & StoredValue<Value>, expireSec?: number): void;
    /** The app later calls the function that `callbackName` names, which may be a dotted path, in the main frame. */
    getItem(key: string, callbackName: string): void;
    removeItem(key: string): void;
    saveEvent<Event extends object>(data: Event & EventOf<Event>): void;
    getEvents(callbackName: string): void;
    setFooterVisible(visible: boolean): void;
}

/** `window.ZelvoraSDKBridge` as the app injects it. An action of the app's is there only if the app registered it. */
export type Bridge = BuiltInFunctions & {
    [Name in Exclude<ActionName, keyof BuiltInFunctions>]?: (data?: ActionData<Name>) => void;
};

declare global {
    interface Window {
        /** Ordinary browsers do not have it. */
        ZelvoraSDKBridge?: Bridge;
    }
}
