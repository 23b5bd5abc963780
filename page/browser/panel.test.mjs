import assert from 'node:assert/strict';
import { mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, beforeEach, test } from 'node:test';
import { startServer } from '../serve/server.mjs';
import { folders } from '../tools/folders.mjs';
import { startChromium } from './chromium.mjs';

const folder = mkdtempSync(join(tmpdir(), 'page-panel-'));
writeFileSync(join(folder, 'index.html'), '<!doctype html><style>:not(html) { display: none !important; color: red }</style><p>Page');
writeFileSync(join(folder, 'stand-in.js'), 'window.zelvoraStandIn = { actions: { share() { window.shared = true } } }');
const standIn = join(folders.package, 'dist/stand-in/classic.js');
const server = await startServer({ folder, standIn });
const { browser, stop } = await startChromium();
after(async () => {
    await stop();
    await server.close();
    rmSync(folder, { recursive: true });
});

/** @type {import('puppeteer-core').Page} */
let page;
/** @type {string[]} */
let told;
beforeEach(async () => {
    page = await (await browser.createBrowserContext()).newPage();
    told = [];
    page.on('console', (message) => told.push(message.text()));
    await page.goto(`http://localhost:${server.port}/`);
});

const root = "document.querySelector('zelvora-stand-in').shadowRoot";

/** Waits until the expression is true. @param {string} expression */
function until(expression) {
    // Not with each frame that is drawn, as nobody sees the page.
    return page.waitForFunction(expression, { timeout: 20_000, polling: 20 });
}

/** Waits until the panel says it. @param {string} text */
function says(text) {
    return until(`${root}.textContent.includes(${JSON.stringify(text)})`);
}

async function open() {
    await page.keyboard.press('Tab');
    await page.keyboard.press('Enter');
    await until(`${root}.querySelector('details').open`);
}

test('the keyboard opens and closes the panel', async () => {
    await open();
    await page.keyboard.press('Tab');
    await page.keyboard.press('Escape');
    assert.equal(await page.evaluate(`${root}.querySelector('details').open`), false);
    assert.equal(await page.evaluate(`${root}.activeElement.localName`), 'summary');
});

test('a screen reader finds its parts by name', async () => {
    await open();
    const names = JSON.stringify(await page.accessibility.snapshot({ interestingOnly: false }));
    for (const name of ['Stored values', 'Queued events', 'Calls', 'No answers', 'No bridge (reloads)', 'Upload'])
        assert.ok(names.includes(`"name":"${name}"`), name);
});

test('the panel shows stored values with the time left, queued events and calls', async () => {
    await open();
    await page.evaluate("ZelvoraSDKBridge.setItem('cart', ['jar'], 3600); ZelvoraSDKBridge.setItem('note_ts', 1)");
    await page.evaluate("ZelvoraSDKBridge.saveEvent({ eventId: 'view' })");
    await says('cart = ["jar"]');
    await says(' s left');
    await says('note_ts = 1');
    await says('{"eventId":"view"}');
    await says('{"action":"setItem","expire":3600,"key":"cart","value":["jar"]}done');
    assert.equal(await page.evaluate(`${root}.textContent.includes('cart_exp')`), false);
});

test('the panel and the console tell what the app drops in silence', async () => {
    await open();
    await page.evaluate("ZelvoraSDKBridge.setFooterVisible('false'); ZelvoraSDKBridge.setItem('k', () => 1)");
    await says('dropped: "visible" has to be of the type boolean, but is string');
    await says('App, warnings: 2');
    assert.ok(told.some((line) => line.includes('setFooterVisible') && line.includes('dropped')), told.join('\n'));
});

test('its button uploads', async () => {
    await page.evaluate("ZelvoraSDKBridge.saveEvent({ eventId: 'view', note: null })");
    await open();
    await says('{"eventId":"view","note":null}');
    await page.evaluate(`${root}.querySelector('button').click()`);
    await until(`${root}.querySelectorAll('ul')[1].childElementCount === 0`);
    assert.ok(told.some((line) => line.includes('uploaded')), told.join('\n'));
});

test('the footer slides away, and stays so on the next page', async () => {
    const isInView = `${root}.querySelector('footer').getBoundingClientRect().top < innerHeight`;
    await until(isInView);
    await page.evaluate('ZelvoraSDKBridge.setFooterVisible(false)');
    await until(`!(${isInView})`);
    await page.reload();
    await until(`!(${isInView})`);
    await page.evaluate('ZelvoraSDKBridge.setFooterVisible(true)');
    await until(isInView);
});

test('the page\'s styles do not reach the panel', async () => {
    await open();
    const color = await page.evaluate(`getComputedStyle(${root}.querySelector('h2')).color`);
    assert.notEqual(color, 'rgb(255, 0, 0)');
    assert.ok(Number(await page.evaluate(`${root}.querySelector('section').offsetHeight`)) > 0);
});

/** @param {string} name */
function flip(name) {
    return page.evaluate(`${root}.querySelector('[name=${name}]').click()`);
}

test('without answers, a reading is never answered', async () => {
    await flip('noAnswer');
    await page.evaluate("window.answered = 0; window.read = () => answered++; ZelvoraSDKBridge.getItem('k', 'read')");
    await flip('noAnswer');
    await page.evaluate("ZelvoraSDKBridge.getItem('k', 'read')");
    await until('answered > 0');
    assert.equal(await page.evaluate('answered'), 1);
});

test('without a bridge the page has none after a reload, and has it again without the fault', async () => {
    await Promise.all([page.waitForNavigation(), flip('noBridge')]);
    assert.equal(await page.evaluate('typeof ZelvoraSDKBridge'), 'undefined');
    assert.equal(await page.evaluate(`${root}.querySelector('[name=noBridge]').checked`), true);
    await Promise.all([page.waitForNavigation(), flip('noBridge')]);
    assert.equal(await page.evaluate('typeof ZelvoraSDKBridge.close'), 'function');
});

test('without actions the page lacks their functions, and a message reaches none', async () => {
    assert.equal(await page.evaluate('typeof ZelvoraSDKBridge.share'), 'function');
    await Promise.all([page.waitForNavigation(), flip('noActions')]);
    assert.equal(await page.evaluate('typeof ZelvoraSDKBridge.share'), 'undefined');
    await page.evaluate("webkit.messageHandlers.zelvora.postMessage({ action: 'invokeCustomAction', name: 'share' })");
    await open();
    await says('the app has no such action');
    assert.equal(await page.evaluate('window.shared'), undefined);
});
