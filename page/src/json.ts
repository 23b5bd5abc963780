import { check } from './bridge-error.js';

/** What JSON can hold. */
export type Json = string | number | boolean | null | readonly Json[] | { readonly [name: string]: Json };

/** `Value`, with `never` in the place of each part that JSON cannot hold, such as a date, a function or `undefined`. */
export type AsJson<Value> = Value extends Json
    ? Value
    : Value extends undefined | bigint | symbol | Date | ((...values: never[]) => unknown)
      ? never
      : Value extends object
        ? { [Name in keyof Value]: AsJson<Value[Name]> }
        : never;

/**
 * A copy that holds what JSON can hold: dates are text, `NaN` and the infinities `null`, and `undefined` members gone. It is
 * an ordinary object also if `value` is a proxy, which cannot be sent to the app.
 */
export function asJson(value: unknown): unknown {
    let text: string | undefined;
    try {
        text = JSON.stringify(value);
    } catch (error) {
        check(false, (error as Error).message);
    }
    return text && JSON.parse(text);
}
