import { bridge } from './app.js';
import { type AnswerOptions, ask } from './answers.js';
import { check } from './bridge-error.js';
import { type AsJson, type Json, asJson } from './json.js';

/** `Event` if it can be uploaded, else a type that nothing fits. */
export type EventOf<Event> = Event extends readonly unknown[] ? never : AsJson<Event>;

/** An event as the app keeps it. */
export type SavedEvent = Record<string, Json>;

/**
 * Appends an event to those that the app uploads. It is brought to what JSON can hold, because the app could upload neither
 * an event with a date or `NaN` in it nor any later one.
 */
export function saveEvent<Event extends object>(event: Event & EventOf<Event>): void {
    const app = bridge();
    const data = asJson(event);
    check(
        !!data && typeof data === 'object' && !Array.isArray(data),
        "The event must be an object, such as { eventId: 'view' }, not text or an array.",
    );
    app.saveEvent(data);
}

/**
 * The events that wait for upload, oldest first. They stay where they are. `null` if one of them holds what JSON cannot, as
 * only a page can save that does not use this package.
 */
export async function getEvents(options?: AnswerOptions): Promise<SavedEvent[] | null> {
    return ask(undefined, options) as Promise<SavedEvent[] | null>;
}
