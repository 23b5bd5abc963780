/**
 * Changes of the stand-in that make it differ from the app, and cases that have to notice.
 * @type {(import('./build.mjs').Seed & { noticedBy: string[] })[]}
 */
export const seeds = [
    {
        name: 'milliseconds',
        what: 'an expiry is off by its unit',
        file: 'preferences.ts',
        from: '.getTime()) / 1000',
        to: '.getTime())',
        noticedBy: ['a value expires after so many seconds', 'a value that is stored again has its time again'],
    },
    {
        name: 'boolean',
        what: 'a boolean is turned into a number',
        file: 'read-posted.ts',
        from: "if (typeof value === 'number' || typeof value === 'boolean' ||",
        to: "if (typeof value === 'boolean')\n            return Number(value);\n        if (typeof value === 'number' ||",
        noticedBy: ['booleans stay booleans, and 0 and 1 stay numbers', 'a page shows and hides the footer'],
    },
    {
        name: 'early',
        what: 'an answer comes before getItem has returned',
        file: 'app.ts',
        from: 'setTimeout(() => answer(callback, encoded));',
        to: 'answer(callback, encoded);',
        noticedBy: ['an answer comes after the call has returned, and after what the page had left to do'],
    },
    {
        name: 'frame',
        what: 'a callback is called inside the frame',
        file: 'index.ts',
        from: 'const isFrame = window.top !== window;',
        to: 'const isFrame = false;',
        noticedBy: ['what a frame asks for is answered in the main frame, and not in the frame'],
    },
    {
        name: 'text-expiry',
        what: 'a text counts as an expiry',
        file: 'dispatch.ts',
        from: "typeof expire === 'number' ? expire : undefined)",
        to: 'expire === undefined ? undefined : Number(expire))',
        noticedBy: ['an expiry that is no number counts as none'],
    },
    {
        name: 'unfilled',
        what: 'an upload leaves null as it is',
        file: 'event-queue.ts',
        from: "value ?? ''",
        to: 'value',
        noticedBy: ['an upload fills in an event id and an advertising id, and writes null as an empty text'],
    },
];
