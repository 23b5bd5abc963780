// With a star, as a page can only add to an interface that is exported so.
export * from './actions.js';
export type { AnswerOptions } from './answers.js';
export { isInApp } from './app.js';
export type { Bridge, BuiltInFunctions } from './bridge.js';
export { BridgeError, type BridgeErrorReason } from './bridge-error.js';
export { close, setFooterVisible } from './container.js';
export { type EventOf, getEvents, type SavedEvent, saveEvent } from './events.js';
export { getItem, removeItem, setItem, type StoredValue } from './items.js';
export type { AsJson, Json } from './json.js';
export { shareWithFrames } from './share-with-frames.js';
