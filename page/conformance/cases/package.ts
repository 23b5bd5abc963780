import {
    BridgeError, getEvents, getItem, hasAction, invoke, isInApp, removeItem, saveEvent, setFooterVisible, setItem,
} from '../../src/index.js';
import { type Case, emptyQueue, newName, order, passTime, received } from '../case.js';

/** Why each call was refused. A call is passed as any script could, without types. */
function reasonsOf(...calls: (() => void)[]): string[] {
    return calls.map((call) => {
        try {
            call();
            return 'taken';
        } catch (error) {
            return error instanceof BridgeError ? error.reason : `another error: ${error}`;
        }
    });
}

function storeUntyped(value: unknown, expire?: unknown): void {
    (setItem as (key: string, value: unknown, expire: unknown) => void)(newName(), value, expire);
}

/** The package's functions, where the bridge is the app's own. */
export const packageInAnyApp: Case[] = [
    {
        name: 'the package finds the app',
        expected: true,
        run: () => isInApp(),
    },
    {
        name: 'the package reads what it stored, and null where nothing is',
        expected: [{ id: '달항아리', counts: [1, 2.5], gift: false }, null],
        run: async () => {
            const key = newName();
            setItem(key, { id: '달항아리', counts: [1, 2.5], gift: false });
            return [await getItem(key), await getItem(newName())];
        },
    },
    {
        name: 'each of many questions of the package gets its own answer',
        expected: Array.from({ length: 50 }, (_, index) => index),
        run: () => {
            const keys = Array.from({ length: 50 }, newName);
            keys.forEach((key, index) => setItem(key, index));
            return Promise.all(keys.map((key) => getItem(key)));
        },
    },
    {
        name: 'what the package stored expires, or goes when it is removed',
        expected: ['value', null, null],
        run: async () => {
            const [expiring, removed] = [newName(), newName()];
            setItem(expiring, 'value', 10);
            setItem(removed, 'value');
            removeItem(removed);
            const before = await getItem(expiring);
            await passTime(11);
            return [before, await getItem(expiring), await getItem(removed)];
        },
    },
    {
        name: 'the package sends an event as JSON has it, so that it can be uploaded',
        expected: [{ eventId: 'view', at: '1970-01-01T00:00:00.000Z', price: null }],
        run: async () => {
            emptyQueue();
            const event = { eventId: 'view', at: new Date(0), price: NaN, gone: undefined };
            (saveEvent as (event: object) => void)(event);
            return getEvents();
        },
    },
    {
        name: 'the package refuses what the app would drop in silence',
        expected: ['kind', 'kind', 'kind', 'kind', 'kind', 'no-app'],
        run: () =>
            reasonsOf(
                () => storeUntyped(null),
                () => storeUntyped('value', '60'),
                () => (saveEvent as (event: unknown) => void)('view'),
                () => (saveEvent as (event: unknown) => void)([]),
                () => (setFooterVisible as (visible: unknown) => void)('false'),
                () => invoke('nowhere'),
            ),
    },
    {
        name: 'the package hides the footer and shows it',
        expected: [false, true],
        run: async () => {
            setFooterVisible(false);
            const hidden = await order('isFooterVisible');
            setFooterVisible(true);
            return [hidden, await order('isFooterVisible')];
        },
    },
];

/** Where the app has actions of its own. */
export const packageWithActions: Case[] = [
    {
        name: 'the package calls the app\'s actions, with text, with objects and without data',
        expected: [{ name: 'share', data: 'tea' }, { name: 'share', data: '{"id":"moon-jar"}' }, { name: 'share' }],
        run: async () => {
            await received();
            invoke('share', 'tea');
            invoke('share', { id: 'moon-jar' });
            invoke('share');
            return received();
        },
    },
    {
        name: 'the package knows the app\'s actions, and takes no built-in function for one',
        expected: [true, false, false],
        run: () => [hasAction('share'), hasAction('nowhere'), hasAction('getItem')],
    },
    {
        name: 'the package refuses data of which an action would get none',
        expected: ['kind', 'kind', 'kind'],
        run: () => reasonsOf(...[5, true, () => {}].map((data) => () => (invoke as (...all: unknown[]) => void)('share', data))),
    },
];
