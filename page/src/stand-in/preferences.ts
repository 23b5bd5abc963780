import type { Value } from './value.js';

// A browser has no bundle identifier.
const prefix = 'ZelvoraSDK_Storage_unknown_';
const timestamp = '_ts';
const expiry = '_exp';

const dateMark = 'ZelvoraStandInDate';
const numberMark = 'ZelvoraStandInNumber';

// JSON, with an object of one member for what JSON lacks.
function toText(value: Value): string {
    return JSON.stringify(value, function (this: Record<string, Value>, name) {
        const member = this[name];
        if (member instanceof Date)
            return { [dateMark]: member.getTime() };
        const isLost = typeof member === 'number' && !Object.is(JSON.parse(JSON.stringify(member)), member);
        return isLost ? { [numberMark]: Object.is(member, -0) ? '-0' : String(member) } : member;
    });
}

function fromText(text: string): Value {
    return JSON.parse(text, (_name, member) => {
        if (member?.[numberMark])
            return Number(member[numberMark]);
        // The time of an invalid date is null in JSON.
        return member?.[dateMark] === undefined ? member : new Date(member[dateMark] ?? NaN);
    });
}

/** A stored value, as the panel shows it. */
export interface StoredItem {
    key: string;
    value: Value;
    /** Negative once it has expired, as it stays until somebody reads it; undefined if it never expires. */
    secondsLeft: number | undefined;
}

/** The app's preferences. A value with an expiry is three entries, as it is in the app. `now` is in milliseconds. */
export class Preferences {
    readonly #storage: Storage;
    readonly #now: () => number;

    constructor(storage: Storage, now: () => number) {
        this.#storage = storage;
        this.#now = now;
    }

    set(key: string, value: Value, lifetime?: number): void {
        this.remove(key);
        this.#write(key, value);
        if (lifetime === undefined)
            return;
        this.#write(key + timestamp, new Date(this.#now()));
        this.#write(key + expiry, lifetime);
    }

    /** Removes the value if it has expired. */
    get(key: string): Value | undefined {
        const left = this.#secondsLeft(key);
        if (left !== undefined && left < 0)
            this.remove(key);
        return this.#read(key);
    }

    remove(key: string): void {
        for (const suffix of ['', timestamp, expiry])
            this.#storage.removeItem(prefix + key + suffix);
    }

    /** Without what belongs to another value. */
    items(): StoredItem[] {
        const isCompanion = (key: string) => {
            const owner = key.replace(/_(ts|exp)$/, '');
            return owner !== key && this.#secondsLeft(owner) !== undefined;
        };
        return Object.keys(this.#storage)
            .filter((name) => name.startsWith(prefix))
            .sort()
            .map((name) => name.slice(prefix.length))
            .filter((key) => !isCompanion(key))
            .map((key) => ({ key, value: this.#read(key) ?? null, secondsLeft: this.#secondsLeft(key) }));
    }

    #secondsLeft(key: string): number | undefined {
        const written = this.#read(key + timestamp);
        const lifetime = this.#read(key + expiry);
        if (!(written instanceof Date) || typeof lifetime !== 'number')
            return undefined;
        // The app's clock has moved on between two calls; a browser's shows whole milliseconds.
        return lifetime - ((this.#now() - written.getTime()) / 1000 || Number.MIN_VALUE);
    }

    #read(key: string): Value | undefined {
        const text = this.#storage.getItem(prefix + key);
        return text === null ? undefined : fromText(text);
    }

    #write(key: string, value: Value): void {
        this.#storage.setItem(prefix + key, toText(value));
    }
}
