import { bridge, type Case, post, received } from '../case.js';

/** What the action was called with. */
async function dataOf(...all: unknown[]): Promise<(string | null)[]> {
    await received();
    for (const data of all)
        bridge().share(data);
    return (await received()).map((call) => call.data ?? null);
}

export const actions: Case[] = [
    {
        name: 'each of the app\'s actions is a function, but for one without a name',
        expected: [
            'a"b\\c', 'close', 'control', 'getEvents', 'getItem', 'removeItem', 'saveEvent', 'setFooterVisible', 'setItem',
            'share', '장바구니',
        ],
        run: () => Object.keys(bridge()).sort(),
    },
    {
        name: 'the names are left in a global variable, the empty one too',
        expected: ['', 'a"b\\c', 'close', 'control', 'share', '장바구니'],
        run: () => [...(window as any).customKeys].sort(),
    },
    {
        name: 'an action receives texts as they are',
        expected: ['hello', ' ', '0', 'it\'s "quoted"\n가'],
        run: () => dataOf('hello', ' ', '0', 'it\'s "quoted"\n가'),
    },
    {
        name: 'an action receives objects and arrays as JSON text',
        expected: ['{"b":1,"a":["x",null]}', '[]', '["목",1]', '{}'],
        run: () => dataOf({ b: 1, a: ['x', null], gone: undefined }, [], ['목', 1], {}),
    },
    {
        name: 'an action receives null as its JSON text',
        expected: ['null'],
        run: () => dataOf(null),
    },
    {
        name: 'an action receives nothing for nothing, an empty text, 0 and false',
        expected: [null, null, null, null, null],
        run: () => dataOf(undefined, '', 0, false, NaN),
    },
    {
        name: 'an action receives nothing for numbers and true',
        expected: [null, null, null],
        run: () => dataOf(7, true, -0.5),
    },
    {
        name: 'an action receives what toJSON makes of an object',
        expected: ['"1970-01-01T00:00:00.000Z"', '"own"', null],
        run: () => dataOf(new Date(0), { toJSON: () => 'own' }, { toJSON: () => undefined }),
    },
    {
        name: 'an action is called without an argument, too',
        expected: [{ name: 'share' }],
        run: async () => {
            await received();
            bridge().share();
            return received();
        },
    },
    {
        name: 'actions are called in the order of the calls',
        expected: [{ name: 'share', data: '1' }, { name: '장바구니' }, { name: 'a"b\\c', data: '2' }, { name: 'share', data: '3' }],
        run: async () => {
            await received();
            bridge().share('1');
            bridge()['장바구니']();
            bridge()['a"b\\c']('2');
            bridge().share('3');
            return received();
        },
    },
    {
        name: 'an action with the name of a built-in function replaces it',
        expected: [{ name: 'close', data: 'really' }],
        run: async () => {
            await received();
            bridge().close('really');
            return received();
        },
    },
    {
        name: 'an action without a name is called by a message',
        expected: [{ name: '', data: 'x' }],
        run: async () => {
            await received();
            post({ action: 'invokeCustomAction', name: '', data: 'x' });
            return received();
        },
    },
    {
        name: 'data that a message holds is text or nothing',
        expected: [{ name: 'share', data: '' }, { name: 'share' }, { name: 'share' }, { name: 'share' }],
        run: async () => {
            await received();
            for (const data of ['', 7, { a: 1 }, null])
                post({ action: 'invokeCustomAction', name: 'share', data });
            return received();
        },
    },
    {
        name: 'an action\'s function returns nothing',
        expected: 'undefined',
        run: () => String(bridge().share('x')),
    },
];
