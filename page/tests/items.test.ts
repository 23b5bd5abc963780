import assert from 'node:assert/strict';
import { test } from 'node:test';
import { AppPage } from './app-page.js';

// What types refuse is called all the same by pages without types.
const untyped = (page: AppPage) => page.package as unknown as Record<string, (...values: unknown[]) => unknown>;

test('setItem posts the key, the value and the expiry', () => {
    const page = new AppPage();
    page.package.setItem('cart', [{ id: 'moon-jar', count: 1 }], 60);
    assert.deepEqual(page.posted, [
        { action: 'setItem', key: 'cart', value: [{ id: 'moon-jar', count: 1 }], expire: 60 },
    ]);
});

test('setItem without an expiry posts none', () => {
    const page = new AppPage();
    page.package.setItem('name', '달항아리');
    assert.deepEqual(page.posted, [{ action: 'setItem', key: 'name', value: '달항아리' }]);
});

test('false, 0 and the empty text are values', () => {
    const page = new AppPage();
    for (const value of [false, 0, ''])
        page.package.setItem<unknown>('key', value as never);
    assert.deepEqual(page.posted.map(({ value }) => value), [false, 0, '']);
});

test('a value is brought to what JSON holds', () => {
    const page = new AppPage();
    const value = { at: new Date(0), rate: NaN, gone: undefined, list: [undefined, 1], deep: { at: new Date(1) } };
    untyped(page)['setItem']!('key', value);
    assert.deepEqual(page.posted[0]?.['value'], {
        at: '1970-01-01T00:00:00.000Z',
        rate: null,
        list: [null, 1],
        deep: { at: '1970-01-01T00:00:00.001Z' },
    });
});

test('a proxy of a framework is sent as what it holds', () => {
    const page = new AppPage();
    page.package.setItem('cart', new Proxy({ id: 'moon-jar' }, {}));
    assert.deepEqual(page.posted[0]?.['value'], { id: 'moon-jar' });
});

for (const [name, value] of [['null', null], ['undefined', undefined], ['NaN', NaN], ['a function', () => {}]] as const)
    test(`${name} as a value is refused`, () => {
        const page = new AppPage();
        assert.throws(() => untyped(page)['setItem']!('key', value), { reason: 'kind', message: /call removeItem\(\)/ });
        assert.deepEqual(page.posted, []);
    });

const expiries = [['text', '60'], ['null', null], ['NaN', NaN], ['a date', new Date()], ['Infinity', Infinity]] as const;
for (const [name, expiry] of expiries)
    test(`an expiry that is ${name} is refused`, () => {
        const page = new AppPage();
        assert.throws(() => untyped(page)['setItem']!('key', 1, expiry), { reason: 'kind', message: /number of seconds/ });
        assert.deepEqual(page.posted, []);
    });

test('a value that JSON cannot write is refused', () => {
    const page = new AppPage();
    const circle: Record<string, unknown> = {};
    circle['self'] = circle;
    for (const value of [circle, 1n, { big: 1n }])
        assert.throws(() => untyped(page)['setItem']!('key', value), { name: 'BridgeError', reason: 'kind' });
    assert.deepEqual(page.posted, []);
});

test('a key that is no text is refused', async () => {
    const page = new AppPage();
    const refused = { name: 'BridgeError', reason: 'kind', message: 'The key must be text.' };
    assert.throws(() => untyped(page)['setItem']!(1, 1), refused);
    assert.throws(() => untyped(page)['removeItem']!(null), refused);
    await assert.rejects(async () => untyped(page)['getItem']!(undefined), refused);
    assert.deepEqual(page.posted, []);
});

test('removeItem posts the key', () => {
    const page = new AppPage();
    page.package.removeItem('cart');
    assert.deepEqual(page.posted, [{ action: 'removeItem', key: 'cart' }]);
});
