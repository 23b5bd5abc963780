import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { DOMWindow } from 'jsdom';
import { AppPage } from './app-page.js';

function addFrame(page: AppPage) {
    const frame = page.window.document.createElement('iframe');
    page.window.document.body.append(frame);
    const window = frame.contentWindow as unknown as DOMWindow;
    page.inject(window, ['share']);
    return page.load(window);
}

test('in a frame a question rejects at once, and says what the main frame can do', async () => {
    const page = new AppPage();
    const frame = addFrame(page);
    for (const answer of [frame.getItem('cart'), frame.getEvents()])
        await assert.rejects(answer, {
            name: 'BridgeError',
            reason: 'frame',
            message: /^Only the main frame gets answers\. There, first call shareWithFrames\(\{ origins: \['.+'\] \}\)\.$/,
        });
    assert.deepEqual(page.posted, []);
    assert.equal(page.clock.timers, 0);
});

test('a frame may make the calls that have no answer', () => {
    const page = new AppPage();
    const frame = addFrame(page);
    frame.setItem('key', 1);
    frame.removeItem('key');
    frame.saveEvent({ eventId: 'view' });
    frame.setFooterVisible(false);
    frame.invoke('share', 'text');
    frame.close();
    const actions = ['setItem', 'removeItem', 'saveEvent', 'setFooterVisible', 'invokeCustomAction', 'close'];
    assert.deepEqual(page.posted.map(({ action }) => action), actions);
});

test('a frame has no answers to share', () => {
    const frame = addFrame(new AppPage());
    assert.throws(() => frame.shareWithFrames({ origins: [] }), {
        reason: 'frame',
        message: 'Only the main frame gets answers.',
    });
});

test('what is not exactly an origin is refused', () => {
    const page = new AppPage();
    const origins = ['https://frames.example', 'https://chat.example/widget'];
    assert.throws(() => page.package.shareWithFrames({ origins }), {
        reason: 'kind',
        message: 'Write "https://chat.example", not "https://chat.example/widget".',
    });
    for (const origin of ['*', 'null', 'frames.example'])
        assert.throws(() => page.package.shareWithFrames({ origins: [origin] }), { message: /Invalid URL/ });
    assert.equal(page.window.document.querySelectorAll('iframe').length, 0);
});
