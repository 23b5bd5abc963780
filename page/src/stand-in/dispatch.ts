import { type Call, Dropped, mismatch, need } from './calls.js';
import type { EventQueue } from './event-queue.js';
import type { Preferences } from './preferences.js';
import { type Dictionary, kindOf, nestingOf, type Value } from './value.js';

/** What the calls of a page act on. */
export interface Receiver {
    readonly preferences: Preferences;
    readonly queue: EventQueue;
    /** Answers once the page's current script has ended. */
    answer(call: Call, callback: string, value: Value | undefined): void;
    setFooterVisible(visible: boolean): void;
    invoke(call: Call, name: string, data: string | undefined): void;
    close(): void;
}

type Operation = (message: Dictionary, app: Receiver, call: Call) => void;

const deepestValue = 512;
// An upload puts each event into an array inside an object.
const deepestEvent = 510;

function needShallow(value: Value, deepest: number): void {
    if (nestingOf(value) > deepest)
        throw new Dropped(`it nests more than ${deepest} levels deep`);
}

function warn(call: Call, phrase: string): void {
    call.outcome = phrase;
    call.isProblem = true;
}

function setItem(message: Dictionary, app: Receiver, call: Call): void {
    const key = need(message, 'key', 'string');
    const { value, expire } = message;
    if (value === undefined || value === null)
        throw new Dropped(`the value is ${value}: use removeItem to remove it`);
    needShallow(value, deepestValue);
    app.preferences.set(key, value, typeof expire === 'number' ? expire : undefined);
    if (expire !== undefined && typeof expire !== 'number')
        warn(call, `stored for ever: ${mismatch('expire', 'number', expire)}`);
}

function saveEvent(message: Dictionary, app: Receiver): void {
    const event = need(message, 'data', 'object');
    needShallow(event, deepestEvent);
    app.queue.save(event);
}

function invokeCustomAction(message: Dictionary, app: Receiver, call: Call): void {
    const { data } = message;
    const text = typeof data === 'string' ? data : undefined;
    app.invoke(call, need(message, 'name', 'string'), text);
    if (text === undefined && (data ?? null) !== null)
        warn(call, `called without data: ${mismatch('data', 'string', data)}`);
}

const operations: Record<string, Operation> = {
    close: (_message, app) => app.close(),
    setItem,
    getItem: (message, app, call) => {
        const key = need(message, 'key', 'string');
        app.answer(call, need(message, 'callback', 'string'), app.preferences.get(key));
    },
    removeItem: (message, app) => app.preferences.remove(need(message, 'key', 'string')),
    saveEvent,
    getEvents: (message, app, call) => app.answer(call, need(message, 'callback', 'string'), app.queue.events()),
    setFooterVisible: (message, app) => app.setFooterVisible(need(message, 'visible', 'boolean')),
    invokeCustomAction,
};

/** Does what the message asks for. Throws `Dropped` where the app would ignore it. */
export function dispatch(message: Value, app: Receiver, call: Call): void {
    if (kindOf(message) !== 'object')
        throw new Dropped(mismatch('message', 'object', message));
    const action = need(message as Dictionary, 'action', 'string');
    if (!Object.hasOwn(operations, action))
        throw new Dropped('there is no such action');
    operations[action]!(message as Dictionary, app, call);
}
