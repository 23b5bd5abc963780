import type { Bridge } from './bridge.js';
import { check } from './bridge-error.js';

/** True if the page is shown by an app, or by the stand-in. False on a server. */
export function isInApp(): boolean {
    // A server has no window.
    return !!globalThis.window?.ZelvoraSDKBridge;
}

export function bridge(): Bridge {
    check(isInApp(), 'Not in an app: ask isInApp(), or install the stand-in.', 'no-app');
    return window.ZelvoraSDKBridge!;
}
