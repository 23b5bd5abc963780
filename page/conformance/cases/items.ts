import { bridge, type Case, newName, passTime, post, read, recorder, settled } from '../case.js';

/** Stores a value with the expiry, and reads it after each of the times, in seconds. */
async function readAfter(expire: unknown, ...times: number[]): Promise<unknown[]> {
    const key = newName();
    bridge().setItem(key, 'value', expire);
    const answers = [];
    for (const time of times) {
        await passTime(time);
        answers.push(await read(key));
    }
    return answers;
}

/** The value, and what the app keeps beside it. */
async function entries(key: string): Promise<unknown[]> {
    return [await read(`${key}_exp`), await read(key)];
}

const year = 31_536_000;

export const items: Case[] = [
    {
        name: 'a key that was never stored is answered as null',
        expected: null,
        run: () => read(newName()),
    },
    {
        name: 'a value stays until it is replaced',
        expected: [1, 'two'],
        run: async () => {
            const key = newName();
            bridge().setItem(key, 1);
            const first = await read(key);
            bridge().setItem(key, 'two');
            return [first, await read(key)];
        },
    },
    {
        name: 'every text is a key',
        expected: ['empty', 'dotted', 'korean'],
        run: () => {
            const keys = { '': 'empty', 'a.b[0] "c"': 'dotted', 장바구니: 'korean' };
            for (const [key, value] of Object.entries(keys))
                bridge().setItem(key, value);
            return Promise.all(Object.keys(keys).map(read));
        },
    },
    {
        name: 'a value without an expiry never expires',
        expected: ['value', 'value'],
        run: () => readAfter(undefined, 0, 10 * year),
    },
    {
        name: 'a value expires after so many seconds',
        expected: ['value', 'value', null, null],
        run: () => readAfter(10, 0, 5, 6, 0),
    },
    {
        name: 'an expiry may be a fraction of a second, or many days',
        expected: [['value', null], ['value', 'value', null]],
        run: async () => [await readAfter(90.5, 90, 1), await readAfter(year, 1, year - 100, 100)],
    },
    {
        name: 'an expiry of no or of negative seconds has passed at the next reading',
        expected: [[null], [null]],
        run: async () => [await readAfter(0, 0), await readAfter(-5, 0)],
    },
    {
        name: 'an expiry that is no number counts as none',
        expected: [['value'], ['value'], ['value'], ['value']],
        run: async () => {
            const answers = [];
            for (const expire of ['60', true, null, [60]])
                answers.push(await readAfter(expire, 100));
            return answers;
        },
    },
    {
        name: 'an expiry that no number can be compared with never passes',
        expected: [['value'], ['value']],
        run: async () => [await readAfter(NaN, year), await readAfter(Infinity, year)],
    },
    {
        name: 'a value without an expiry does not inherit one',
        expected: 'second',
        run: async () => {
            const key = newName();
            bridge().setItem(key, 'first', 10);
            bridge().setItem(key, 'second');
            await passTime(11);
            return read(key);
        },
    },
    {
        name: 'a value that is stored again has its time again',
        expected: ['second', null],
        run: async () => {
            const key = newName();
            bridge().setItem(key, 'first', 10);
            await passTime(8);
            bridge().setItem(key, 'second', 10);
            await passTime(8);
            const then = await read(key);
            await passTime(3);
            return [then, await read(key)];
        },
    },
    {
        name: 'an expired value stays until somebody reads it, and then goes with its expiry',
        expected: [10, null, null],
        run: async () => {
            const key = newName();
            bridge().setItem(key, 'value', 10);
            await passTime(11);
            return [...(await entries(key)), await read(`${key}_exp`)];
        },
    },
    {
        name: 'a reading without a callback does not look at the value',
        expected: [10, null],
        run: async () => {
            const key = newName();
            bridge().setItem(key, 'value', 10);
            await passTime(11);
            bridge().getItem(key);
            return entries(key);
        },
    },
    {
        name: 'the expiry is an entry beside the value, which a page can change',
        expected: [60, null],
        run: async () => {
            const key = newName();
            bridge().setItem(key, 'value', 60);
            const before = await read(`${key}_exp`);
            bridge().setItem(`${key}_exp`, 5);
            await passTime(6);
            return [before, await read(key)];
        },
    },
    {
        name: 'the moment of storing is an entry too, and a date',
        expected: [null, 'value'],
        run: async () => {
            const key = newName();
            bridge().setItem(key, 'value', 10);
            const moment = await read(`${key}_ts`);
            bridge().removeItem(`${key}_ts`);
            await passTime(11);
            return [moment, await read(key)];
        },
    },
    {
        name: 'a removed value is gone, with its expiry',
        expected: [null, null],
        run: () => {
            const key = newName();
            bridge().setItem(key, 'value', 10);
            bridge().removeItem(key);
            return entries(key);
        },
    },
    {
        name: 'removing what is not there does nothing',
        expected: 'value',
        run: () => {
            const key = newName();
            bridge().setItem(key, 'value');
            bridge().removeItem(newName());
            return read(key);
        },
    },
    {
        name: 'a key that is no text is ignored',
        expected: [null, null, 'kept'],
        run: async () => {
            const { name, calls } = recorder();
            bridge().setItem('5', 'kept');
            bridge().setItem(7, 'value');
            bridge().setItem(['list'], 'value');
            bridge().setItem(undefined, 'value');
            bridge().removeItem(5);
            bridge().getItem(7, name);
            await settled();
            return [await read('7'), await read('list'), await read('5'), ...calls];
        },
    },
    {
        name: 'the functions return nothing',
        expected: 'undefined,undefined,undefined,undefined,undefined,undefined',
        run: () => {
            const { name } = recorder();
            return [
                bridge().setItem(newName(), 1),
                bridge().getItem(newName(), name),
                bridge().removeItem(newName()),
                bridge().saveEvent({}),
                bridge().getEvents(name),
                bridge().setFooterVisible(true),
            ].map(String).join();
        },
    },
    {
        name: 'a message is read by its exact names',
        expected: [null, 'value'],
        run: async () => {
            const [wrong, right] = [newName(), newName()];
            post({ action: 'SetItem', key: wrong, value: 1 });
            post({ action: 'setItem ', key: wrong, value: 1 });
            post({ Action: 'setItem', key: wrong, value: 1 });
            post({ action: 'setItem', Key: wrong, value: 1 });
            post({ action: 'setItem', key: right, value: 'value', more: 'ignored' });
            return [await read(wrong), await read(right)];
        },
    },
    {
        name: 'a message of another kind is ignored',
        expected: 'alive',
        run: () => {
            const key = newName();
            for (const body of [null, undefined, 1, 'close', true, [], ['close'], {}, { action: 7 }, { action: null }, new Date(0)])
                post(body);
            post({ action: 'nonsense' });
            bridge().setItem(key, 'alive');
            return read(key);
        },
    },
];
