import assert from 'node:assert/strict';
import { test } from 'node:test';
import * as onServer from '../src/index.js';
import { AppPage } from './app-page.js';

test('isInApp tells whether there is a bridge', () => {
    assert.equal(new AppPage().package.isInApp(), true);
    assert.equal(new AppPage({ isInApp: false }).package.isInApp(), false);
});

const places = [
    ['an ordinary browser', new AppPage({ isInApp: false }).package],
    ['a server', onServer],
] as const;
for (const [place, bridge] of places) {
    const noApp = { name: 'BridgeError', reason: 'no-app', message: /ask isInApp\(\), or install the stand-in/ };

    test(`in ${place} each call says that there is no app`, () => {
        assert.throws(() => bridge.close(), noApp);
        assert.throws(() => bridge.setItem('key', 1), noApp);
        assert.throws(() => bridge.removeItem('key'), noApp);
        assert.throws(() => bridge.saveEvent({ eventId: 'view' }), noApp);
        assert.throws(() => bridge.setFooterVisible(true), noApp);
        assert.throws(() => bridge.invoke('share', 'text'), noApp);
        assert.throws(() => bridge.shareWithFrames({ origins: [] }), noApp);
    });

    test(`in ${place} each question rejects`, async () => {
        await assert.rejects(bridge.getItem('key'), noApp);
        await assert.rejects(bridge.getEvents(), noApp);
    });

    test(`in ${place} there are no actions`, () => {
        assert.equal(bridge.isInApp(), false);
        assert.equal(bridge.hasAction('share'), false);
    });
}

test('loading the package changes nothing of the page', () => {
    const page = new AppPage();
    const before = Object.getOwnPropertyNames(page.window);
    page.load(page.window);
    assert.deepEqual(Object.getOwnPropertyNames(page.window), before);
    assert.deepEqual(page.posted, []);
});
