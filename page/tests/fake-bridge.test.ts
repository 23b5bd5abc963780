import assert from 'node:assert/strict';
import { afterEach, test } from 'node:test';
import * as page from '../src/index.js';
import { type FakeBridge, type FakeBridgeOptions, fakeBridge } from '../src/testing/index.js';

let fake: FakeBridge;

function install(options?: FakeBridgeOptions): FakeBridge {
    fake = fakeBridge(options);
    return fake;
}

afterEach(() => fake.restore());

test('a page finds an app', () => {
    install();
    assert.equal(page.isInApp(), true);
});

test('every call is kept, with what it was called with', () => {
    const { calls } = install({ actions: { share() {} } });
    page.setItem('cart', [{ id: 'moon-jar' }], 60);
    page.saveEvent({ eventId: 'view' });
    page.setFooterVisible(false);
    page.invoke('share', 'text');
    page.close();
    assert.deepEqual(calls, [
        ['setItem', 'cart', [{ id: 'moon-jar' }], 60],
        ['saveEvent', { eventId: 'view' }],
        ['setFooterVisible', false],
        ['share', 'text'],
        ['close'],
    ]);
});

test('a value is there that the test gave, or the page stored', async () => {
    const { items } = install({ items: { name: '달항아리' } });
    assert.equal(await page.getItem('name'), '달항아리');
    page.setItem('cart', [1]);
    assert.deepEqual(await page.getItem('cart'), [1]);
    page.removeItem('name');
    assert.equal(await page.getItem('name'), null);
    assert.deepEqual(items, { cart: [1] });
});

test('what every object has is no value', async () => {
    install();
    assert.equal(await page.getItem('toString'), null);
});

test('the values of the test are left as they are', () => {
    const items = { name: 'a' };
    install({ items });
    page.removeItem('name');
    assert.deepEqual(items, { name: 'a' });
});

test('saved events are the events that wait', async () => {
    const { events } = install();
    page.saveEvent({ eventId: 'view' });
    assert.deepEqual(await page.getEvents(), [{ eventId: 'view' }]);
    assert.deepEqual(events, [{ eventId: 'view' }]);
});

test('an answer comes at the next microtask, after the call', async () => {
    install({ items: { name: 'a' } });
    const order: string[] = [];
    const answered = page.getItem('name').then(() => order.push('answer'));
    order.push('call');
    await answered;
    assert.deepEqual(order, ['call', 'answer']);
});

test('answers given by hand come one after another', async () => {
    const { answer } = install({ items: { a: 1, b: 2 }, answers: 'by hand' });
    const order: unknown[] = [];
    const all = ['a', 'b'].map((key) => page.getItem(key).then((value) => order.push(value)));
    await Promise.resolve();
    assert.deepEqual(order, []);
    assert.equal(answer(), true);
    await all[0];
    assert.deepEqual(order, [1]);
    assert.equal(answer(), true);
    await all[1];
    assert.deepEqual(order, [1, 2]);
    assert.equal(answer(), false);
});

test('an answer holds what was stored when it was asked for', async () => {
    const { answer } = install({ items: { name: 'before' }, answers: 'by hand' });
    const name = page.getItem('name');
    page.setItem('name', 'after');
    answer();
    assert.equal(await name, 'before');
});

test('an answer may call any path of the page', () => {
    const { answer } = install({ items: { name: 'a' }, answers: 'by hand' });
    const got: unknown[] = [];
    Object.assign(globalThis, { shop: { onName: (value: unknown) => got.push(value) } });
    window.ZelvoraSDKBridge!.getItem('name', 'shop.onName');
    window.ZelvoraSDKBridge!.getItem('name', 'shop.missing.onName');
    answer();
    answer();
    assert.deepEqual(got, ['a']);
    delete (globalThis as { shop?: unknown }).shop;
});

test('an action gets what the app would give it', () => {
    const got: unknown[] = [];
    install({ actions: { share: (data) => got.push(data) } });
    page.invoke('share', 'text');
    page.invoke('share', { id: 1 });
    page.invoke('share');
    const { share } = window.ZelvoraSDKBridge as unknown as Record<string, (data: unknown) => void>;
    for (const data of [5, true, '', null])
        share!(data);
    assert.deepEqual(got, ['text', '{"id":1}', null, null, null, null, 'null']);
});

test('restore puts back what was there', () => {
    const outer = install();
    const bridge = window.ZelvoraSDKBridge;
    const inner = fakeBridge();
    assert.notEqual(window.ZelvoraSDKBridge, bridge);
    inner.restore();
    assert.equal(window.ZelvoraSDKBridge, bridge);
    outer.restore();
    assert.equal(page.isInApp(), false);
    assert.equal('window' in globalThis, false);
    assert.equal('top' in globalThis, false);
});
