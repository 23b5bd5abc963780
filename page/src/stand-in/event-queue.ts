import type { Preferences } from './preferences.js';
import { type Dictionary, kindOf } from './value.js';

const key = 'tracking_event';
const batchLimit = 500;
// What the SDK has once a user has refused to be tracked.
const advertisingId = 'unknown';

/** An event as the collector gets it. */
function normalised(event: Dictionary): Dictionary {
    const members: Dictionary = {};
    for (const [name, value] of Object.entries(event))
        members[name] = value ?? '';
    // Whatever else a page gives as an id stays, also 0 and false.
    if ([undefined, null, ''].includes(event.eventId as null))
        members.eventId = '0';
    if ([undefined, null, ''].includes(event.adid as null))
        members.adid = advertisingId;
    return members;
}

/** The events that wait for upload: one of the app's preferences, written anew with each event. */
export class EventQueue {
    readonly #preferences: Preferences;

    constructor(preferences: Preferences) {
        this.#preferences = preferences;
    }

    events(): Dictionary[] {
        const stored = this.#preferences.get(key);
        return Array.isArray(stored) && stored.every((event) => kindOf(event) === 'object') ? (stored as Dictionary[]) : [];
    }

    save(event: Dictionary): void {
        this.#preferences.set(key, [...this.events(), event]);
    }

    /** The oldest events, as an upload sends them. */
    batch(): Dictionary[] {
        return this.events().slice(0, batchLimit).map(normalised);
    }

    removeFirst(count: number): void {
        const rest = this.events().slice(count);
        this.#preferences.remove(key);
        if (rest.length)
            this.#preferences.set(key, rest);
    }
}
