import { bridge, isInApp } from './app.js';
import { check } from './bridge-error.js';

/**
 * The actions that the app registered, by name, with the data that each takes: text, an object, or none. A page declares
 * those of its app:
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

/** Any text as long as the page declares no action. */
export type ActionName = [keyof CustomActions] extends [never] ? string : keyof CustomActions & string;

type DeclaredData<Name> = Name extends keyof CustomActions ? CustomActions[Name] : string | object | void;

// Of a number, a boolean or a function the action would get nothing.
type Sendable<Data> = Data extends number | boolean | bigint | symbol | ((...values: never[]) => unknown) ? never : Data;

/** What `invoke` takes for this action. */
export type ActionData<Name> = Sendable<DeclaredData<Name>>;

type ActionArguments<Name> = [ActionData<Name>] extends [void]
    ? []
    : void extends ActionData<Name>
      ? [data?: Exclude<ActionData<Name>, void>]
      : [data: ActionData<Name>];

const builtIn = /^(close|setItem|getItem|removeItem|saveEvent|getEvents|setFooterVisible)$/;

/** True if the app registered this action before it opened the page. */
export function hasAction(name: string): boolean {
    return isInApp() && !builtIn.test(name) && Object.hasOwn(bridge(), name);
}

/** Runs an action of the app's. The action gets text as it is and an object as its JSON text. */
export function invoke<Name extends ActionName>(name: Name, ...[data]: ActionArguments<Name>): void {
    const app = bridge();
    check(hasAction(name), `No action "${name}": ask hasAction().`, 'no-app');
    check(
        data === undefined || typeof data === 'string' || typeof data === 'object',
        'The action would get no data: pass text or an object.',
    );
    (app as unknown as Record<string, (data: unknown) => void>)[name]!(data);
}
