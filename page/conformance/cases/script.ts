import { bridge, type Case, order, post, read, newName, received } from '../case.js';

const builtIn = 'close,setItem,getItem,removeItem,saveEvent,getEvents,setFooterVisible';

export const script: Case[] = [
    {
        name: 'an app without actions has exactly the seven functions',
        expected: builtIn,
        run: () => Object.keys(bridge()).join(),
    },
    {
        name: 'the functions are those of the injected script, letter for letter',
        expected: [
            "function() {\n        window.webkit.messageHandlers.zelvora.postMessage({ action: 'close' });\n    }",
            'function(key, value, expireSec) {\n        window.webkit.messageHandlers.zelvora.postMessage({ \n' +
                "            action: 'setItem', \n            key: key, \n            value: value, \n" +
                '            expire: expireSec \n        });\n    }',
        ],
        run: () => [String(bridge().close), String(bridge().setItem)],
    },
    {
        name: 'the script leaves a global variable, which no constant of the page may be called',
        expected: ['[]', false],
        run: () => [
            JSON.stringify((window as any).customKeys),
            Object.getOwnPropertyDescriptor(window, 'customKeys')?.configurable,
        ],
    },
    {
        name: 'an action that was registered later is no function, and yet is called',
        expected: ['undefined', true],
        run: async () => [typeof bridge().control, await order('isFooterVisible')],
    },
    {
        name: 'a page may change the bridge',
        expected: ['function', 7],
        run: () => {
            bridge().mine = () => {};
            const kind = typeof bridge().mine;
            delete bridge().mine;
            return [kind, Object.keys(bridge()).length];
        },
    },
    {
        name: 'an action that the app lacks is ignored',
        expected: [[], 'alive'],
        run: async () => {
            post({ action: 'invokeCustomAction', name: 'nonsense', data: 'x' });
            post({ action: 'invokeCustomAction' });
            post({ action: 'invokeCustomAction', name: 7 });
            const key = newName();
            bridge().setItem(key, 'alive');
            return [await received(), await read(key)];
        },
    },
];
