/**
 * The actions that the app registered, by name, with the data that each takes. A page declares its app's:
 *
 *     declare module '@zelvora/page-bridge' {
 *         interface CustomActions {
 *             share: string;
 *             openCart: { id: string };
 *             refresh: void;
 *         }
 *     }
 */
export interface CustomActions {}

/** The functions that every app has. A call with an argument of another type does nothing, and says nothing. */
export interface BuiltInFunctions {
    close(): void;
    setItem(key: string, value: unknown, expireSec?: number): void;
    getItem(key: string, callbackName: string): void;
    removeItem(key: string): void;
    saveEvent(data: object): void;
    getEvents(callbackName: string): void;
    setFooterVisible(visible: boolean): void;
}

/** `window.ZelvoraSDKBridge` as the app injects it. The app's own actions are there if it registered them. */
export type Bridge = BuiltInFunctions & {
    [Name in Exclude<keyof CustomActions, keyof BuiltInFunctions>]?: (data?: CustomActions[Name]) => void;
};

declare global {
    interface Window {
        /** Ordinary browsers do not have it. */
        ZelvoraSDKBridge?: Bridge;
    }
}
