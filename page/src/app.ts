import type { Bridge } from './bridge.js';
import { BridgeError } from './bridge-error.js';

/** True if the page is shown by an app, or by the stand-in. False on a server. */
export function isInApp(): boolean {
    return typeof window !== 'undefined' && !!window.ZelvoraSDKBridge;
}

export function bridge(): Bridge {
    if (!isInApp())
        throw new BridgeError('no-app', 'This page is not in an app. Ask isInApp() first, or install the stand-in.');
    return window.ZelvoraSDKBridge!;
}
