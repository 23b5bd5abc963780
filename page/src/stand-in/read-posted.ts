import { Dropped } from './calls.js';
import type { Value } from './value.js';

const mostValues = 100_000;
// More than any store accepts, and less than ends the stack.
const deepest = 1_000;

/**
 * What the app makes of a message, as the engine hands it over: undefined members are gone, an object that contains
 * itself contains null there, and objects of every other class are their own members. Throws for what cannot be posted,
 * such as a function.
 */
export function readPosted(body: unknown): Value {
    let left = mostValues;

    function read(value: unknown, outer: unknown[]): Value {
        if (!left-- || outer.length > deepest)
            throw new Dropped('a message may hold 100,000 values and nest 512 levels deep');
        if (typeof value === 'string')
            return value.replace(/\p{Surrogate}/gu, '\ufffd');
        if (typeof value === 'number' || typeof value === 'boolean' || value instanceof Date)
            return value;
        if (typeof value !== 'object' || !value || outer.includes(value))
            return null;
        const inner = [...outer, value];
        if (Array.isArray(value))
            return Array.from(value, (element) => read(element, inner));
        const members = Object.entries(value).filter(([, member]) => member !== undefined);
        return Object.fromEntries(members.sort(byName).map(([name, member]) => [read(name, []), read(member, inner)]));
    }

    return read(structuredClone(body), []);
}

// As the app on Linux keeps them; the phone promises no order.
function byName([a]: [string, unknown], [b]: [string, unknown]): number {
    return a < b ? -1 : 1;
}
