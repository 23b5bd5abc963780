import assert from 'node:assert/strict';
import { existsSync, readFileSync } from 'node:fs';
import { createServer, type Server } from 'node:http';
import type { AddressInfo } from 'node:net';
import { extname, join } from 'node:path';
import { after, before, test } from 'node:test';
import type { Browser, Page } from 'puppeteer-core';
import { startChromium } from '../browser/chromium.mjs';
import { folders } from '../tools/folders.mjs';

const shop = join(folders.project, 'examples/service/site/shop');
const types: Record<string, string> = {
    '.html': 'text/html',
    '.js': 'text/javascript',
    '.css': 'text/css',
    '.svg': 'image/svg+xml',
};
const shopName = JSON.stringify({ profile: 'prd', name: { ko: '한옥상점', en: 'Hanok Store' } });

// The example shop as an ordinary server has it, with the package where the local service has it.
function startServer(): Server {
    return createServer((request, response) => {
        const path = new URL(request.url!, 'http://shop').pathname;
        const inPackage = path.startsWith('/page-bridge/');
        const file = inPackage ? join(folders.package, 'dist', path.slice('/page-bridge'.length)) : join(shop, path);
        if (path === '/shop.json')
            response.setHeader('Content-Type', 'application/json').end(shopName);
        else if (existsSync(file))
            response.setHeader('Content-Type', types[extname(file)] ?? '').end(readFileSync(file));
        else
            response.writeHead(404).end();
    }).listen(0);
}

let chromium: Awaited<ReturnType<typeof startChromium>>;
let browser: Browser;
let server: Server;
let page: Page;

before(async () => {
    server = startServer();
    chromium = await startChromium();
    ({ browser } = chromium);
    page = await browser.newPage();
    page.on('pageerror', (error) => assert.fail(String(error)));
});

after(async () => {
    await chromium.stop();
    server.close();
});

async function open(path: string) {
    const { port } = server.address() as AddressInfo;
    await page.goto(`http://localhost:${port}/${path}`);
    await page.waitForSelector('body[data-state=ready]');
}

const textOf = (id: string) => page.$eval(`#${id}`, (element) => element.textContent);

// The stand-in's side.
const fromPackage = (expression: string) =>
    page.evaluate(`import('/page-bridge/index.js').then(({ getItem, getEvents }) => ${expression})`);

test('the shop keeps its cart in an ordinary browser', async () => {
    await open('product.html?id=moon-jar&lang=en');
    await page.click('#add-to-cart');
    await page.waitForFunction("document.getElementById('cart-count').textContent === '1'");
    await open('cart.html?lang=en');
    assert.equal(await textOf('count-moon-jar'), '1');
    assert.deepEqual(await fromPackage("getItem('cart')"), [{ productId: 'moon-jar', count: 1 }]);
    await page.click('#remove-moon-jar');
    await page.waitForFunction("!document.getElementById('cart-empty').hidden");
    assert.equal(await fromPackage("getItem('cart')"), null);
});

test('the shop saves its events in an ordinary browser', async () => {
    await open('product.html?id=hanji-lamp&lang=en');
    const before = (await fromPackage('getEvents()')) as { eventId: string }[];
    assert.equal(before.at(-1)?.eventId, 'product_view');
    await page.click('#buy-now');
    const after = (await fromPackage('getEvents()')) as { eventId: string }[];
    assert.deepEqual(after.slice(before.length).map(({ eventId }) => eventId), ['purchase']);
});

test('the shop remembers the last product in an ordinary browser', async () => {
    await open('product.html?id=soban-table&lang=en');
    await open('index.html?lang=en');
    assert.match(await page.$eval('#recent', (link) => (link as HTMLAnchorElement).href), /id=soban-table/);
});

test('the footer comes and goes in an ordinary browser', async () => {
    await open('bridge.html?lang=en');
    assert.equal(await textOf('bridge-state'), 'Connected to the app');
    const isFooterVisible = () =>
        page.evaluate("import('/page-bridge/stand-in/index.js').then((standIn) => standIn.installStandIn().isFooterVisible)");
    assert.equal(await isFooterVisible(), true);
    await page.click('#btn-footer-hide');
    assert.equal(await isFooterVisible(), false);
    await page.click('#btn-footer-show');
    assert.equal(await isFooterVisible(), true);
});

test('a cart that cannot be read is not written over', async () => {
    const broken = await browser.newPage();
    await broken.evaluateOnNewDocument(`
        window.stored = [];
        window.ZelvoraSDKBridge = {
            getItem() { throw new Error('no answer'); },
            setItem(key) { stored.push(key); },
            saveEvent() {},
        };`);
    const { port } = server.address() as AddressInfo;
    await broken.goto(`http://localhost:${port}/product.html?id=moon-jar&lang=en`);
    await broken.waitForSelector('body[data-state=ready]');
    await broken.click('#add-to-cart');
    await broken.waitForFunction("!document.getElementById('notice').hidden");
    assert.match(await broken.$eval('#notice', ({ textContent }) => textContent!), /could not be read/);
    assert.deepEqual(await broken.evaluate('stored'), ['recentProduct']);
});
