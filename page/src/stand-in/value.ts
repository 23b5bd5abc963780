/** A value as the app has it. Pages post more kinds; `readPosted` makes these of them. */
export type Value = null | boolean | number | string | Date | Value[] | Dictionary;

export interface Dictionary {
    [name: string]: Value;
}

export type Kind = 'null' | 'boolean' | 'number' | 'string' | 'date' | 'array' | 'object' | 'undefined';

export function kindOf(value: Value | undefined): Kind {
    if (value === null)
        return 'null';
    if (Array.isArray(value))
        return 'array';
    return value instanceof Date ? 'date' : (typeof value as Kind);
}

/** 0 for a plain value, 1 for an empty array. */
export function nestingOf(value: Value): number {
    return membersOf(value)?.reduce<number>((most, member) => Math.max(most, 1 + nestingOf(member)), 1) ?? 0;
}

function membersOf(value: Value): Value[] | undefined {
    return ['array', 'object'].includes(kindOf(value)) ? Object.values(value as Dictionary) : undefined;
}

/** Whether JSON can represent it: it lacks dates and numbers that are not finite. */
export function isJSON(value: Value): boolean {
    if (typeof value === 'number')
        return Number.isFinite(value);
    return membersOf(value)?.every(isJSON) ?? kindOf(value) !== 'date';
}
