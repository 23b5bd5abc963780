import { type Dictionary, type Kind, kindOf, type Value } from './value.js';

/** A call that the page made, and what became of it. */
export interface Call {
    /** The message as JSON text, shortened. */
    message: string;
    /** A phrase such as "done", "dropped: …" or "answered …". */
    outcome: string;
    /** Whether the page's author should look at it. */
    isProblem: boolean;
}

/** What the app ignores without a word. The stand-in says why. */
export class Dropped extends Error {}

interface KindMap {
    string: string;
    boolean: boolean;
    object: Dictionary;
}

/** The member of a message. The app ignores a message if one is of another kind. */
export function need<Needed extends Kind & keyof KindMap>(
    message: Dictionary,
    member: string,
    kind: Needed,
): KindMap[Needed] {
    const value = message[member];
    if (kindOf(value) !== kind)
        throw new Dropped(mismatch(member, kind, value));
    return value as KindMap[Needed];
}

export function mismatch(member: string, kind: Kind, value: Value | undefined): string {
    return `"${member}" has to be of the type ${kind}, but is ${kindOf(value)}`;
}
