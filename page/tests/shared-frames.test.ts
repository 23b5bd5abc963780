import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { createServer, type Server } from 'node:http';
import type { AddressInfo } from 'node:net';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import type { Browser, Frame, Page } from 'puppeteer-core';
import { startChromium } from '../browser/chromium.mjs';
import { folders } from '../tools/folders.mjs';
import { bridgeScript } from './app-page.js';

// Answers in the main frame whoever asks, a little later, as the app does.
const app = `
    window.asked = 0;
    window.webkit = { messageHandlers: { zelvora: { postMessage({ action, key, callback }) {
        window.asked += 1;
        const value = action === 'getItem' ? 'value of ' + key : [{ eventId: 'view' }];
        if (callback && !window.isSilent)
            setTimeout(() => (0, eval)(callback + '(' + JSON.stringify(value) + ');'));
    } } } };
    ${bridgeScript()}`;
const classicScript = readFileSync(join(folders.package, 'dist/classic.js'), 'utf8');
const page = `<!DOCTYPE html><script>${app}</script><script>${classicScript}</script><body></body>`;

let chromium: Awaited<ReturnType<typeof startChromium>>;
let browser: Browser;
let server: Server;
let port: number;

before(async () => {
    server = createServer((_, response) => response.setHeader('Content-Type', 'text/html').end(page)).listen(0);
    ({ port } = server.address() as AddressInfo);
    chromium = await startChromium();
    ({ browser } = chromium);
});

after(async () => {
    await chromium.stop();
    server.close();
});

interface Frames {
    /** The origins that the main frame shares with. */
    shares?: string[] | undefined;
    silent?: boolean;
    /** The frame's attributes. */
    sandbox?: string;
}

async function withFrame<T>({ shares, silent = false, sandbox }: Frames, work: (main: Page, frame: Frame) => Promise<T>) {
    const main = await browser.newPage();
    try {
        await main.goto(`http://main.localhost:${port}/`);
        await main.evaluate(`window.isSilent = ${silent}`);
        if (shares)
            await main.evaluate(`ZelvoraPageBridge.shareWithFrames({ origins: ${JSON.stringify(shares)} })`);
        await main.evaluate(addFrame, `http://frame.localhost:${port}/frame`, sandbox);
        return await work(main, main.frames().find((frame) => frame.url().endsWith('/frame'))!);
    } finally {
        await main.close();
    }
}

async function addFrame(src: string, sandbox?: string) {
    const frame = document.createElement('iframe');
    if (sandbox)
        frame.setAttribute('sandbox', sandbox);
    const loaded = new Promise((resolve) => frame.addEventListener('load', resolve));
    frame.src = src;
    document.body.append(frame);
    await loaded;
}

// What an expression comes to in a frame of another origin.
function inFrame(expression: string, frames: Frames): Promise<unknown> {
    const script = `(async () => {
        const { getItem, getEvents } = ZelvoraPageBridge;
        try { return await (${expression}); } catch ({ reason, message }) { return { reason, message }; }
    })()`;
    return withFrame(frames, (_, frame) => frame.evaluate(script));
}

const ofFrame = () => [`http://frame.localhost:${port}`];

test('a frame of a named origin gets answers', async () => {
    assert.equal(await inFrame("getItem('cart')", { shares: ofFrame() }), 'value of cart');
    assert.deepEqual(await inFrame('getEvents()', { shares: ofFrame() }), [{ eventId: 'view' }]);
});

test('many questions of a frame may wait at once', async () => {
    const expression = "Promise.all(['a', 'b', 'c'].map((key) => getItem(key)))";
    assert.deepEqual(await inFrame(expression, { shares: ofFrame() }), ['value of a', 'value of b', 'value of c']);
});

const refused: [string, () => Frames][] = [
    ['where nothing is shared', () => ({})],
    ['of an origin that is not named', () => ({ shares: ['http://other.localhost', `http://main.localhost:${port}`] })],
    ['of a named origin that is sandboxed', () => ({ shares: ofFrame(), sandbox: 'allow-scripts' })],
];
for (const [name, frames] of refused) {
    test(`a frame ${name} is refused at once`, async () => {
        const { reason } = (await inFrame("getItem('cart', { timeout: 1e9 })", frames())) as { reason: string };
        assert.equal(reason, 'frame');
    });

    test(`the main frame does not ask for a frame ${name}`, async () => {
        const asked = await withFrame(frames(), async (main, frame) => {
            // Messages arrive in order.
            const read = main.evaluate('new Promise((r) => addEventListener("message", ({ data }) => data === "last" && r()))');
            await frame.evaluate(`
                top.postMessage({ zelvoraAsks: true, key: 'cart' }, '*', [new MessageChannel().port1]);
                top.postMessage('last', '*');`);
            await read;
            return main.evaluate('asked');
        });
        assert.equal(asked, 0);
    });
}

test('a frame has its own time-out', async () => {
    const late = await inFrame("getItem('cart', { timeout: 50 })", { shares: ofFrame(), silent: true });
    assert.deepEqual(late, { reason: 'timeout', message: 'No answer in 50 ms.' });
});
