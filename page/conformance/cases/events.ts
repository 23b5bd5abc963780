import { bridge, type Case, emptyQueue, order, read, readEvents, until } from '../case.js';

/** The queue after these have been saved. */
function queueOf(...events: unknown[]): Promise<any> {
    emptyQueue();
    for (const event of events)
        bridge().saveEvent(event);
    return readEvents();
}

function nestedEvent(levels: number): object {
    let value: object = {};
    for (let level = 1; level < levels; level += 1)
        value = { value };
    return value;
}

/** The events as the collector got them. The upload ends when they have left the queue. */
async function uploaded(...events: object[]): Promise<unknown[]> {
    await queueOf(...events);
    await order('upload');
    await until(async () => !(await readEvents()).length);
    return (await order('collected')).slice(-events.length);
}

export const events: Case[] = [
    {
        name: 'an empty queue is answered as an empty array',
        expected: [],
        run: () => queueOf(),
    },
    {
        name: 'events are kept in their order, as the page sent them',
        expected: [{ eventId: 'a', list: [1, null] }, {}, { adid: null, eventId: '', nested: { yes: true } }],
        run: () => queueOf({ eventId: 'a', list: [1, null] }, {}, { eventId: '', adid: null, nested: { yes: true } }),
    },
    {
        name: 'reading the queue leaves it as it is',
        expected: [[{ a: 1 }], [{ a: 1 }]],
        run: async () => [await queueOf({ a: 1 }), await readEvents()],
    },
    {
        name: 'an event that is no object is ignored',
        expected: [{ real: 1 }],
        run: () => queueOf('{"a":1}', 7, true, null, undefined, [{ a: 1 }], new Date(0), BigInt(1), { real: 1 }),
    },
    {
        name: 'an event of another class is its own members',
        expected: [{}, { '0': 5 }],
        run: () => queueOf(new Map([['a', 1]]), new Uint8Array([5])),
    },
    {
        name: 'members that are undefined are dropped',
        expected: [{ kept: [null] }],
        run: () => queueOf({ kept: [undefined], gone: undefined }),
    },
    {
        name: 'events nest 510 levels deep and no deeper',
        expected: 1,
        run: async () => {
            emptyQueue();
            bridge().saveEvent(nestedEvent(510));
            bridge().saveEvent(nestedEvent(511));
            return (await readEvents()).length;
        },
    },
    {
        name: 'a queue that holds what JSON lacks is answered as null',
        expected: [null, null],
        run: async () => [await queueOf({ ok: 1 }, { at: new Date(0) }), await queueOf({ part: NaN })],
    },
    {
        name: 'the queue is the value under "tracking_event"',
        expected: [[{ a: 1 }], [{ b: 2 }], []],
        run: async () => {
            await queueOf({ a: 1 });
            const value = await read('tracking_event');
            bridge().setItem('tracking_event', [{ b: 2 }]);
            const replaced = await readEvents();
            bridge().removeItem('tracking_event');
            return [value, replaced, await readEvents()];
        },
    },
    {
        name: 'a value of another shape reads as an empty queue, and the next event replaces it',
        expected: [[], [], [], [{ next: 1 }]],
        run: async () => {
            const answers = [];
            for (const value of ['text', { a: 1 }, [{ a: 1 }, 'text']]) {
                bridge().setItem('tracking_event', value);
                answers.push(await readEvents());
            }
            bridge().saveEvent({ next: 1 });
            return [...answers, await readEvents()];
        },
    },
    {
        name: 'an event takes the queue\'s expiry away',
        expected: [[{ a: 1 }, { b: 2 }], null],
        run: async () => {
            bridge().setItem('tracking_event', [{ a: 1 }], 60);
            bridge().saveEvent({ b: 2 });
            return [await readEvents(), await read('tracking_event_exp')];
        },
    },
    {
        name: 'an event of the moment of the call is saved',
        expected: [{ list: [1] }],
        run: () => {
            emptyQueue();
            const event = { list: [1] };
            bridge().saveEvent(event);
            event.list.push(2);
            return readEvents();
        },
    },
    {
        name: 'an upload sends what it found, and what was saved meanwhile stays',
        expected: [{ later: 1 }],
        run: async () => {
            await queueOf({ first: 1 });
            await order('upload');
            bridge().saveEvent({ later: 1 });
            await until(async () => (await readEvents()).length === 1);
            return readEvents();
        },
    },
    {
        name: 'an upload fills in an event id and an advertising id, and writes null as an empty text',
        expected: [
            { adid: 'unknown', eventId: '0' },
            { adid: 'unknown', eventId: '0', note: '' },
            { adid: 'unknown', eventId: '0' },
        ],
        run: () => uploaded({}, { eventId: '', adid: null, note: null }, { eventId: null, adid: '' }),
    },
    {
        name: 'an upload keeps every other id, and null inside of members',
        expected: [
            { adid: 'mine', eventId: 7 },
            { adid: false, eventId: 0 },
            { adid: [], eventId: 'a', nested: { note: null }, list: [null] },
        ],
        run: () =>
            uploaded(
                { eventId: 7, adid: 'mine' },
                { eventId: 0, adid: false },
                { eventId: 'a', adid: [], nested: { note: null }, list: [null] },
            ),
    },
    {
        name: 'one upload takes the oldest 500 events',
        expected: [1, { eventId: '500' }],
        run: async () => {
            const many = Array.from({ length: 501 }, (_, index) => ({ eventId: String(index) }));
            bridge().setItem('tracking_event', many);
            await order('upload');
            await until(async () => (await readEvents()).length < 501);
            const left = await readEvents();
            return [left.length, left[0]];
        },
    },
    {
        name: 'an event that JSON cannot hold stops every upload',
        expected: null,
        run: async () => {
            emptyQueue();
            bridge().saveEvent({ fine: 1 });
            bridge().saveEvent({ at: new Date(0) });
            await order('upload');
            await order('upload');
            // As long as that event is in the queue, the whole queue is answered as null.
            const left = await readEvents();
            emptyQueue();
            return left;
        },
    },
];
