import assert from 'node:assert/strict';
import { test } from 'node:test';
import { AppPage } from './app-page.js';

test('close posts close', () => {
    const page = new AppPage();
    page.package.close();
    assert.deepEqual(page.posted, [{ action: 'close' }]);
});

test('setFooterVisible posts true and false', () => {
    const page = new AppPage();
    page.package.setFooterVisible(false);
    page.package.setFooterVisible(true);
    assert.deepEqual(page.posted, [
        { action: 'setFooterVisible', visible: false },
        { action: 'setFooterVisible', visible: true },
    ]);
});

for (const visible of ['false', 0, null, undefined])
    test(`a footer that is ${JSON.stringify(visible)} is refused`, () => {
        const page = new AppPage();
        assert.throws(() => page.package.setFooterVisible(visible as never), {
            reason: 'kind',
            message: 'Pass true or false, not text.',
        });
        assert.deepEqual(page.posted, []);
    });
