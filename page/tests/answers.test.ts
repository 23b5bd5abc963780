import assert from 'node:assert/strict';
import { test } from 'node:test';
import { AppPage } from './app-page.js';

const callTimes = <T>(count: number, call: () => T) => Array.from({ length: count }, call);

test('getItem gives what the app answers', async () => {
    const page = new AppPage();
    const cart = page.package.getItem('cart');
    page.answer([{ id: 'moon-jar' }]);
    assert.equal(JSON.stringify(await cart), '[{"id":"moon-jar"}]');
});

test('a request names a function of one private object, by a dotted path', () => {
    const page = new AppPage();
    void page.package.getItem('cart');
    void page.package.getEvents();
    const [item, events] = page.posted;
    assert.equal(item?.['action'], 'getItem');
    assert.equal(item?.['key'], 'cart');
    assert.equal(events?.['action'], 'getEvents');
    for (const message of [item, events])
        assert.match(String(message?.['callback']), /^__zelvoraAnswers\.[a-z]\w*$/);
    assert.notEqual(item?.['callback'], events?.['callback']);
});

test('a missing value is null', async () => {
    const page = new AppPage();
    const missing = page.package.getItem('missing');
    page.answer(null);
    assert.equal(await missing, null);
});

test('many may wait at once, and each gets its own answer', async () => {
    const page = new AppPage();
    const waiting = ['a', 'b', 'c'].map((key) => page.package.getItem(key));
    for (const message of [...page.posted].reverse())
        page.answer(`of ${message['key']}`, message);
    assert.deepEqual(await Promise.all(waiting), ['of a', 'of b', 'of c']);
});

test('an answer that does not come in 5 seconds is an error', async () => {
    const page = new AppPage();
    const late = page.package.getItem('cart');
    page.clock.advance(4999);
    assert.equal(page.waiting, 1);
    page.clock.advance(1);
    await assert.rejects(late, { name: 'BridgeError', reason: 'timeout', message: 'No answer in 5000 ms.' });
});

test('a page may wait for another time', async () => {
    const page = new AppPage();
    const late = page.package.getEvents({ timeout: 20 });
    page.clock.advance(20);
    await assert.rejects(late, { reason: 'timeout', message: 'No answer in 20 ms.' });
});

test('an answer that comes too late does nothing', async () => {
    const page = new AppPage();
    const late = page.package.getItem('cart');
    page.clock.advance(5000);
    await assert.rejects(late);
    page.answer('too late');
    const next = page.package.getItem('cart');
    page.answer('too late', page.posted[0]);
    page.answer('in time');
    assert.equal(await next, 'in time');
});

test('an answer that comes twice counts once', async () => {
    const page = new AppPage();
    const item = page.package.getItem('cart');
    page.answer('first');
    page.answer('second');
    assert.equal(await item, 'first');
    page.answer('third');
});

test('an answer that comes before the call returns counts as well', async () => {
    const page = new AppPage();
    page.window.eval('ZelvoraSDKBridge.getItem = (key, name) => Function(name + "(1)")()');
    assert.equal(await page.package.getItem('cart'), 1);
    assert.equal(page.waiting, 0);
});

test('ten thousand answers leave nothing behind', async () => {
    const page = new AppPage();
    const waiting = callTimes(10_000, () => page.package.getItem('cart'));
    assert.equal(page.waiting, 10_000);
    page.posted.forEach((message, index) => page.answer(index, message));
    assert.deepEqual(await Promise.all(waiting), waiting.map((_, index) => index));
    assert.equal(page.waiting, 0);
    assert.equal(page.clock.timers, 0);
});

test('ten thousand time-outs leave nothing behind', async () => {
    const page = new AppPage();
    const waiting = callTimes(10_000, () => page.package.getItem('cart'));
    page.clock.advance(5000);
    const outcomes = await Promise.allSettled(waiting);
    assert.equal(outcomes.filter(({ status }) => status === 'rejected').length, 10_000);
    assert.equal(page.waiting, 0);
    assert.equal(page.clock.timers, 0);
});

test('a call that fails leaves nothing behind', async () => {
    const page = new AppPage();
    page.window.eval('ZelvoraSDKBridge.getItem = () => { throw new Error("broken"); }');
    await assert.rejects(page.package.getItem('cart'), { message: 'broken' });
    assert.equal(page.waiting, 0);
    assert.equal(page.clock.timers, 0);
});

test('two copies of the package on one page get their own answers', async () => {
    const page = new AppPage();
    const copy = page.load(page.window);
    const waiting = [page.package.getItem('a'), copy.getItem('b')];
    const [first, second] = page.posted;
    assert.notEqual(first?.['callback'], second?.['callback']);
    page.answer('of b', second);
    page.answer('of a', first);
    assert.deepEqual(await Promise.all(waiting), ['of a', 'of b']);
});

test('questions get their own answers also where every random number is the same', async () => {
    const page = new AppPage();
    page.window.eval('Math.random = () => 0.25');
    const waiting = ['a', 'b'].map((key) => page.package.getItem(key));
    for (const message of page.posted)
        page.answer(`of ${message['key']}`, message);
    assert.deepEqual(await Promise.all(waiting), ['of a', 'of b']);
});

test('an answer to the page that was here before does nothing', async () => {
    const before = new AppPage();
    void before.package.getItem('cart');
    const page = new AppPage();
    page.window.eval('Math.random = () => 0.25');
    const item = page.package.getItem('cart');
    page.answer('for the page before', before.posted[0]);
    page.answer('for this page');
    assert.equal(await item, 'for this page');
});
