import assert from 'node:assert/strict';
import { test } from 'node:test';
import { AppPage } from './app-page.js';

const invoke = (page: AppPage, name: string, ...data: unknown[]) => page.package.invoke(name, ...(data as [string]));

const sent: [string, unknown[], unknown][] = [
    ['text', ['안녕'], '안녕'],
    ['an object, as its JSON text', [{ id: 'moon-jar' }], '{"id":"moon-jar"}'],
    ['an array, as its JSON text', [[1, 2]], '[1,2]'],
    ['null, as the text null', [null], 'null'],
    ['nothing', [], null],
    ['undefined, as nothing', [undefined], null],
    ['an empty text, as nothing', [''], null],
];
for (const [name, data, arrived] of sent)
    test(`an action is sent ${name}`, () => {
        const page = new AppPage({ actions: ['share'] });
        invoke(page, 'share', ...data);
        assert.deepEqual(page.posted, [{ action: 'invokeCustomAction', name: 'share', data: arrived }]);
    });

for (const data of [5, 0, NaN, true, false, 1n, Symbol('share'), () => {}])
    test(`an action with ${String(data)} is refused`, () => {
        const page = new AppPage({ actions: ['share'] });
        assert.throws(() => invoke(page, 'share', data), { reason: 'kind', message: /pass text or an object/ });
        assert.deepEqual(page.posted, []);
    });

test('an action that the app lacks is refused', () => {
    const page = new AppPage({ actions: ['share'] });
    assert.throws(() => invoke(page, 'order', 'moon-jar'), {
        name: 'BridgeError',
        reason: 'no-app',
        message: 'No action "order": ask hasAction().',
    });
    assert.deepEqual(page.posted, []);
});

test('hasAction knows the actions of the app', () => {
    const { hasAction } = new AppPage({ actions: ['share', '장바구니', ''] }).package;
    assert.equal(hasAction('share'), true);
    assert.equal(hasAction('장바구니'), true);
    assert.equal(hasAction('order'), false);
    assert.equal(hasAction(''), false);
});

test('what every object has is no action', () => {
    const page = new AppPage({ actions: ['share'] });
    for (const name of ['toString', 'constructor', '__proto__', 'hasOwnProperty']) {
        assert.equal(page.package.hasAction(name), false);
        assert.throws(() => invoke(page, name, 'text'), { reason: 'no-app' });
    }
});

test('an action may be named like what every object has', () => {
    const page = new AppPage({ actions: ['toString'] });
    assert.equal(page.package.hasAction('toString'), true);
    invoke(page, 'toString', 'text');
    assert.deepEqual(page.posted, [{ action: 'invokeCustomAction', name: 'toString', data: 'text' }]);
});

test('a built-in function is no action', () => {
    const page = new AppPage();
    for (const name of ['close', 'setItem', 'getItem', 'removeItem', 'saveEvent', 'getEvents', 'setFooterVisible']) {
        assert.equal(page.package.hasAction(name), false);
        assert.throws(() => invoke(page, name, 'text'), { reason: 'no-app' });
    }
    assert.deepEqual(page.posted, []);
});

test('an action named like a built-in function is what that function does', () => {
    const page = new AppPage({ actions: ['close'] });
    page.package.close();
    assert.deepEqual(page.posted, [{ action: 'invokeCustomAction', name: 'close', data: null }]);
});
