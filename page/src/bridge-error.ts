/**
 * Why a call could not be made or was not answered:
 * - `no-app`: the page is not in an app, or the app lacks the action.
 * - `kind`: the app would ignore an argument of this type.
 * - `frame`: answers do not reach this frame.
 * - `timeout`: the answer did not come in time. It may still come, and does nothing then.
 */
export type BridgeErrorReason = 'no-app' | 'kind' | 'frame' | 'timeout';

/** What the app would ignore without a word. The message says what to write instead. */
export class BridgeError extends Error {
    readonly reason: BridgeErrorReason;

    constructor(reason: BridgeErrorReason, message: string) {
        super(message);
        this.name = 'BridgeError';
        this.reason = reason;
    }
}
