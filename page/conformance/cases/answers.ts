import { bridge, type Case, newName, read, recorder, settled, troubleOf } from '../case.js';

declare global {
    interface Window {
        /** Calls and alerts, in their order. */
        steps: string[];
    }
}

/** Notes alerts and answers while the value is read. */
async function stepsOfReading(values: readonly unknown[]): Promise<string[]> {
    const native = window.alert;
    window.steps = [];
    window.alert = (text) => window.steps.push(`alert ${text}`);
    const note = newName();
    Object.assign(window, { [note]: (value: unknown) => window.steps.push(`answer ${JSON.stringify(value)}`) });
    for (const value of values) {
        const key = newName();
        bridge().setItem(key, value);
        bridge().getItem(key, note);
    }
    await settled();
    window.alert = native;
    // The last reading is that of `settled`.
    return window.steps.slice(0, -1);
}

/** What the page hears of while the callback is answered. */
function troubleOfAnswer(callbackName: string, value: unknown = null): Promise<string[]> {
    return troubleOf(() => {
        const key = newName();
        bridge().setItem(key, value);
        bridge().getItem(key, callbackName);
    });
}

export const answers: Case[] = [
    {
        name: 'an answer comes after the call has returned, and after what the page had left to do',
        expected: ['returned', 'microtask', 'answered'],
        run: async () => {
            const order: string[] = [];
            const name = newName();
            Object.assign(window, { [name]: () => order.push('answered') });
            bridge().getItem(newName(), name);
            order.push('returned');
            await Promise.resolve().then(() => order.push('microtask'));
            await settled();
            return order;
        },
    },
    {
        name: 'answers come in the order of the requests',
        expected: ['first', [], 'second', null],
        run: async () => {
            const { name, calls } = recorder();
            const [first, second] = [newName(), newName()];
            bridge().removeItem('tracking_event');
            bridge().setItem(first, 'first');
            bridge().setItem(second, 'second');
            bridge().getItem(first, name);
            bridge().getEvents(name);
            bridge().getItem(second, name);
            bridge().getItem(newName(), name);
            await settled();
            return calls;
        },
    },
    {
        name: 'an answer holds what was stored when it was asked for',
        expected: ['before'],
        run: async () => {
            const { name, calls } = recorder();
            const key = newName();
            bridge().setItem(key, 'before');
            bridge().getItem(key, name);
            bridge().setItem(key, 'after');
            await settled();
            return calls;
        },
    },
    {
        name: 'a callback may be a dotted path',
        expected: [[true, 'value']],
        run: async () => {
            const calls: unknown[] = [];
            const owner = newName();
            const shop = {
                deep: {
                    receive(value: unknown) {
                        calls.push([this === shop.deep, value]);
                    },
                },
            };
            Object.assign(window, { [owner]: shop });
            const key = newName();
            bridge().setItem(key, 'value');
            bridge().getItem(key, `${owner}.deep.receive`);
            bridge().getItem(key, `window.${owner}.deep.missing`);
            await settled();
            return calls;
        },
    },
    {
        name: 'a callback may be a name that only scripts know, or any expression',
        expected: [null, null, null],
        run: async () => {
            // Of the page's classic script: a top-level constant is no member of the window.
            const { calls, name } = recorder();
            Object.assign(window, { passOn: (window as any)[name] });
            bridge().getItem(newName(), 'lexicalCallback');
            bridge().getItem(newName(), `(value => ${name}(value))`);
            bridge().getItem(newName(), `window['${name}']`);
            await settled();
            return calls;
        },
    },
    {
        name: 'a callback is called with one argument',
        expected: [1, 1],
        run: async () => {
            const counts: number[] = [];
            const name = newName();
            Object.assign(window, { [name]: (...all: unknown[]) => counts.push(all.length) });
            bridge().getItem(newName(), name);
            bridge().getEvents(name);
            await settled();
            return counts;
        },
    },
    {
        name: 'a callback that does not exist, or is no expression, is an error of the page',
        expected: [['error ReferenceError'], ['error SyntaxError'], ['error TypeError'], []],
        run: async () => [
            await troubleOfAnswer('noSuchFunction'),
            await troubleOfAnswer('no such function'),
            await troubleOfAnswer('conformance.run.missing.deeper'),
            await troubleOfAnswer(''),
        ],
    },
    {
        name: 'a callback that throws is an error of the page, and the next one is called',
        expected: [['error RangeError'], 'next'],
        run: async () => {
            const name = newName();
            Object.assign(window, {
                [name]: () => {
                    throw new RangeError('of the page');
                },
            });
            const trouble = await troubleOfAnswer(name);
            const key = newName();
            bridge().setItem(key, 'next');
            return [trouble, await read(key)];
        },
    },
    {
        name: 'a value with a quotation mark makes the alert an error of the page',
        expected: [['error SyntaxError'], []],
        run: async () => [await troubleOfAnswer('String', "it's"), await troubleOfAnswer('String', 'its')],
    },
    {
        name: 'a callback that is no text is not called',
        expected: 0,
        run: async () => {
            const { name, calls } = recorder();
            bridge().getItem(newName(), 7);
            bridge().getItem(newName(), () => calls.push(1));
            bridge().getItem(newName());
            bridge().getItem(newName(), [name]);
            bridge().getEvents(null);
            bridge().getEvents();
            await settled();
            return calls.length;
        },
    },
    {
        name: 'an alert precedes each answer',
        expected: ['alert 7', 'answer 7', 'alert "text"', 'answer "text"', 'alert {"a":[null]}', 'answer {"a":[null]}'],
        run: () => stepsOfReading([7, 'text', { a: [null] }]),
    },
    {
        name: 'a quotation mark breaks the alert and not the answer',
        expected: ['answer "it\'s"', 'alert null', 'answer null'],
        run: () => stepsOfReading(["it's", new Date(0)]),
    },
    {
        name: 'the alert reads escapes once more',
        expected: ['alert "a\nb"', 'answer "a\\nb"'],
        run: () => stepsOfReading(['a\nb']),
    },
    {
        name: 'a callback may use the bridge',
        expected: 'value',
        run: async () => {
            const [key, name] = [newName(), newName()];
            bridge().setItem(key, 'value');
            return new Promise((resolve) => {
                Object.assign(window, { [name]: () => read(key).then(resolve) });
                bridge().getItem(newName(), name);
            });
        },
    },
];
