import { bridge, type Case, newName, read, readBack, readBackAll, troubleOf } from '../case.js';

function nested(levels: number): unknown {
    let value: unknown = 1;
    for (let level = 0; level < levels; level += 1)
        value = [value];
    return value;
}

function depthOf(value: unknown): unknown {
    return Array.isArray(value) ? 1 + (depthOf(value[0]) as number) : value === 'earlier' ? value : 0;
}

export const values: Case[] = [
    {
        name: 'texts come back letter for letter',
        expected: ['', "it's \"\\ \n\r\t\u0000", '\u2028\u2029', '한글 😀', '</script>', 'null'],
        run: () => readBackAll(['', "it's \"\\ \n\r\t\u0000", '\u2028\u2029', '한글 😀', '</script>', 'null']),
    },
    {
        name: 'half of a surrogate pair becomes the replacement character, in names too',
        expected: ['x\ufffd', '\ufffdy', { '\ufffd': 1 }],
        run: () => readBackAll(['x\ud800', '\udc00y', { '\udc00': 1 }]),
    },
    {
        name: 'numbers come back as the same numbers',
        expected: [true, true, true, true, true, true, true, true, true],
        run: async () => {
            const numbers = [0, 1, -7.5, 0.1, 5e-324, 1.7976931348623157e308, 2 ** 53, 1e21, -1e-7];
            const answers = await readBackAll(numbers);
            return numbers.map((number, index) => Object.is(number, answers[index]));
        },
    },
    {
        name: 'zero keeps its sign',
        expected: [true, true],
        run: async () => [Object.is(await readBack(-0), -0), Object.is((await readBack([-0]))[0], -0)],
    },
    {
        name: 'booleans stay booleans, and 0 and 1 stay numbers',
        expected: [true, false, 1, 0, [true, 1, false, 0]],
        run: () => readBackAll([true, false, 1, 0, [true, 1, false, 0]]),
    },
    {
        name: 'arrays and objects come back with all that is in them, null too',
        expected: [[], {}, [1, ['two', { three: [null] }]], { a: null, b: { c: [] } }],
        run: () => readBackAll([[], {}, [1, ['two', { three: [null] }]], { a: null, b: { c: [] } }]),
    },
    {
        name: 'members that are undefined are dropped, and elements become null',
        expected: [{ kept: 1 }, [null, 1], [null, null]],
        run: () => readBackAll([{ kept: 1, gone: undefined }, [undefined, 1], new Array(2)]),
    },
    {
        name: 'members come back in the order of their names',
        expected: 'a,b,c',
        run: async () => Object.keys(await readBack({ c: 1, a: 2, b: 3 })).join(),
    },
    {
        name: 'a member may have any name but "__proto__"',
        expected: '{"constructor":2,"toString":3}',
        run: async () => JSON.stringify(await readBack(JSON.parse('{"__proto__":1,"constructor":2,"toString":3}'))),
    },
    {
        name: 'undefined and null as the value leave what was stored',
        expected: ['earlier', 'earlier'],
        run: () => readBackAll([undefined, null]),
    },
    {
        name: 'a value without its member leaves what was stored',
        expected: 'earlier',
        run: () => {
            const key = newName();
            bridge().setItem(key, 'earlier');
            (window as any).webkit.messageHandlers.zelvora.postMessage({ action: 'setItem', key });
            return read(key);
        },
    },
    {
        name: 'a date, and whatever holds one, is answered as null',
        expected: [null, null, null, null],
        run: () => readBackAll([new Date(0), new Date(NaN), [new Date(0)], { a: { b: new Date(0) } }]),
    },
    {
        name: 'a number that is not finite, and whatever holds one, is answered as null',
        expected: [null, null, null, null],
        run: () => readBackAll([NaN, -Infinity, [1, NaN], { a: [Infinity] }]),
    },
    {
        name: 'objects of other classes come back as their own members',
        expected: [{}, {}, {}, { x: 1 }, { '0': 7, '1': 8 }, [{}]],
        run: () => {
            class Point {
                x = 1;
            }
            return readBackAll([
                new Map([[1, 2]]), new Set([1]), /x/, new Point(), new Uint8Array([7, 8]), [new Map()],
            ]);
        },
    },
    {
        name: 'a big integer counts as null',
        expected: ['earlier', [null]],
        run: () => readBackAll([BigInt(10), [BigInt(10)]]),
    },
    {
        name: 'boxed texts, numbers and booleans are objects',
        expected: [{}, {}, { '0': 'a' }],
        run: () => readBackAll([new Boolean(true), new Number(1), new String('a')]),
    },
    {
        name: 'an object that contains itself contains null there',
        expected: { list: [null, 1], me: null, name: 'c' },
        run: () => {
            const cycle: Record<string, unknown> = { name: 'c' };
            cycle.me = cycle;
            cycle.list = [cycle, 1];
            return readBack(cycle);
        },
    },
    {
        name: 'an object that occurs twice is there twice',
        expected: [[7], { shared: [7] }, [7]],
        run: () => {
            const shared = [7];
            return readBack([shared, { shared }, shared]);
        },
    },
    {
        name: 'getters are read, and toJSON is not called',
        expected: { computed: 2 },
        run: () => {
            class Base {
                toJSON() {
                    return 'never';
                }
            }
            return readBack(Object.defineProperty(new Base(), 'computed', { get: () => 2, enumerable: true }));
        },
    },
    {
        name: 'what is posted is a copy',
        expected: [1],
        run: () => {
            const key = newName();
            const list = [1];
            bridge().setItem(key, list);
            list.push(2);
            return read(key);
        },
    },
    {
        name: 'functions, symbols, elements and proxies cannot be posted, and nobody hears of it',
        expected: [[], [], [], [], [], 'earlier'],
        run: async () => {
            const key = newName();
            bridge().setItem(key, 'earlier');
            const trouble = [];
            for (const value of [() => 1, Symbol('s'), [() => 1], document.body, new Proxy({}, {})])
                trouble.push(await troubleOf(() => bridge().setItem(key, value)));
            return [...trouble, await read(key)];
        },
    },
    {
        name: 'values nest 512 levels deep and no deeper',
        expected: [512, 'earlier'],
        run: async () => (await readBackAll([nested(512), nested(513)])).map(depthOf),
    },
    {
        name: 'a message with more than 100,000 values is dropped',
        expected: [90_000, 'earlier'],
        run: async () => {
            const answers = (await readBackAll([new Array(90_000), new Array(100_000)])) as any[];
            return [answers[0].length, answers[1]];
        },
    },
];
