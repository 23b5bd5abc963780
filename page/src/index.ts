export { isInApp } from './app.js';
export type { Bridge, BuiltInFunctions, CustomActions } from './bridge.js';
export { BridgeError, type BridgeErrorReason } from './bridge-error.js';
