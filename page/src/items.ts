import { bridge } from './app.js';
import { type AnswerOptions, ask } from './answers.js';
import { check } from './bridge-error.js';
import { type AsJson, asJson } from './json.js';

/** `Value` if the app can store it and give it back, else a type that nothing fits. */
export type StoredValue<Value> = Value extends null ? never : AsJson<Value>;

function checkKey(key: unknown): void {
    check(typeof key === 'string', 'The key must be text.');
}

/**
 * Stores a value in the app. After `expireSec` seconds it is gone; without it, it stays until it is removed or replaced.
 * The value is brought to what JSON can hold: a date becomes text.
 */
export function setItem<Value>(key: string, value: Value & StoredValue<Value>, expireSec?: number): void {
    const app = bridge();
    checkKey(key);
    const stored = asJson(value);
    check(stored != null, 'null, undefined and NaN cannot be stored: call removeItem().');
    check(expireSec === undefined || Number.isFinite(expireSec), 'The expiry must be a number of seconds, or left out.');
    app.setItem(key, stored, expireSec);
}

/** The value, or `null` if there is none or it has expired. */
export async function getItem<Value = unknown>(key: string, options?: AnswerOptions): Promise<Value | null> {
    checkKey(key);
    return ask(key, options) as Promise<Value | null>;
}

export function removeItem(key: string): void {
    const app = bridge();
    checkKey(key);
    app.removeItem(key);
}
