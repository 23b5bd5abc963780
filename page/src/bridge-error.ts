/**
 * Why a call cannot be made, or was not answered:
 * - `no-app`: the page is not in an app, or the app lacks the action.
 * - `kind`: the app would ignore an argument of this type.
 * - `frame`: answers do not reach this frame.
 * - `timeout`: the answer did not come in time. If it comes later, it does nothing.
 */
export type BridgeErrorReason = 'no-app' | 'kind' | 'frame' | 'timeout';

/** For what the app would ignore without a word. The message says what to write instead. */
export class BridgeError extends Error {
    declare readonly reason: BridgeErrorReason;

    constructor(reason: BridgeErrorReason, message: string) {
        super(message);
        this.name = 'BridgeError';
        this.reason = reason;
    }
}

/** Throws unless the app would do what it is asked. */
export function check(isFine: boolean, message: string, reason: BridgeErrorReason = 'kind'): asserts isFine {
    if (!isFine)
        throw new BridgeError(reason, message);
}
