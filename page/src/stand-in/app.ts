import { answer, encode } from './answers.js';
import { type Call, Dropped } from './calls.js';
import { dispatch, type Receiver } from './dispatch.js';
import { EventQueue } from './event-queue.js';
import { Preferences } from './preferences.js';
import { readPosted } from './read-posted.js';
import type { Session } from './session.js';
import { type Dictionary, isJSON, type Value } from './value.js';

/** The app's own actions, by name. As in the app, an action gets a text or nothing. */
export type Actions = Record<string, (data: string | undefined) => void>;

export interface AppOptions {
    actions: Actions;
    storage: Storage;
    /** In milliseconds since 1970. */
    now: () => number;
    onClose: (uploaded: Dictionary[]) => void;
}

const longestMessage = 500;
const mostCalls = 200;

/** The app's side of the bridge: keeps what pages store, and does what they ask for. */
export class App implements Receiver {
    readonly preferences: Preferences;
    readonly queue: EventQueue;
    /** The latest calls, oldest first. */
    readonly calls: Call[] = [];
    readonly session: Session;
    /** Called whenever something has happened. */
    didChange = () => {};
    readonly #options: AppOptions;

    constructor(options: AppOptions, session: Session) {
        this.#options = options;
        this.session = session;
        this.preferences = new Preferences(options.storage, options.now);
        this.queue = new EventQueue(this.preferences);
    }

    /** Takes what a page or a frame of it posted. */
    receive(body: unknown): void {
        const call: Call = { message: '', outcome: 'done', isProblem: false };
        try {
            const message = readPosted(body);
            call.message = JSON.stringify(message).slice(0, longestMessage);
            dispatch(message, this, call);
        } catch (error) {
            // The message is dropped, cannot be posted, or does not fit into the browser's storage.
            call.outcome = `dropped: ${(error as Error).message}`;
            call.isProblem = true;
        }
        this.calls.push(call);
        this.calls.splice(0, this.calls.length - mostCalls);
        this.#tell(call);
    }

    /** Sends the oldest events, as far as a browser can: they leave the queue and are returned as they would be sent. */
    upload(): Dictionary[] {
        const events = this.queue.batch();
        if (!isJSON(events)) {
            console.warn('[stand-in] no upload: an event holds a date or a number that JSON lacks, and blocks all others');
            return [];
        }
        this.queue.removeFirst(events.length);
        console.info('[stand-in] uploaded', events);
        this.didChange();
        return events;
    }

    // Receiver
    answer(call: Call, callback: string, value: Value | undefined): void {
        if (this.session.has('noAnswer')) {
            call.outcome = 'not answered';
            return;
        }
        const encoded = encode(value);
        call.outcome = `answered ${encoded}`;
        setTimeout(() => answer(callback, encoded));
    }

    setFooterVisible(visible: boolean): void {
        this.session.setFooterVisible(visible);
    }

    invoke(call: Call, name: string, data: string | undefined): void {
        const action = this.session.has('noActions') ? undefined : this.#options.actions[name];
        if (!action)
            throw new Dropped('the app has no such action');
        call.outcome = 'called';
        setTimeout(() => action(data));
    }

    close(): void {
        setTimeout(() => {
            this.#options.onClose(this.upload());
        });
    }

    #tell(call: Call): void {
        if (call.isProblem)
            console.warn(`[stand-in] ${call.message}: ${call.outcome}`);
        this.didChange();
    }
}
