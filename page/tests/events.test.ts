import assert from 'node:assert/strict';
import { test } from 'node:test';
import { AppPage } from './app-page.js';

const save = (page: AppPage, event: unknown) => page.package.saveEvent(event as object & never);

test('saveEvent posts the event', () => {
    const page = new AppPage();
    page.package.saveEvent({ eventId: 'cart_add', items: [{ id: 'moon-jar', price: 1.5 }], gift: false, adid: null });
    assert.deepEqual(page.posted, [
        {
            action: 'saveEvent',
            data: { eventId: 'cart_add', items: [{ id: 'moon-jar', price: 1.5 }], gift: false, adid: null },
        },
    ]);
});

test('an event is brought to what JSON holds, so that it can be uploaded', () => {
    const page = new AppPage();
    save(page, { at: new Date(0), rate: NaN, most: Infinity, least: -Infinity, gone: undefined, deep: [{ at: new Date(1) }] });
    assert.deepEqual(page.posted[0]?.['data'], {
        at: '1970-01-01T00:00:00.000Z',
        rate: null,
        most: null,
        least: null,
        deep: [{ at: '1970-01-01T00:00:00.001Z' }],
    });
});

test('the event of the page is left as it is', () => {
    const page = new AppPage();
    const event = { at: new Date(0), gone: undefined };
    save(page, event);
    assert.deepEqual(event, { at: new Date(0), gone: undefined });
});

const refused: [string, unknown][] = [
    ['JSON text', '{"eventId":"view"}'],
    ['an array', [{ eventId: 'view' }]],
    ['null', null],
    ['undefined', undefined],
    ['a number', 5],
    ['a date', new Date()],
    ['an object that becomes text', { toJSON: () => 'view' }],
];
for (const [name, event] of refused)
    test(`${name} as an event is refused`, () => {
        const page = new AppPage();
        assert.throws(() => save(page, event), { reason: 'kind', message: /must be an object, such as \{ eventId: 'view' \}/ });
        assert.deepEqual(page.posted, []);
    });

test('an event that JSON cannot write is refused', () => {
    const page = new AppPage();
    assert.throws(() => save(page, { count: 1n }), { name: 'BridgeError', reason: 'kind', message: /BigInt/ });
    assert.deepEqual(page.posted, []);
});

test('getEvents gives the events that wait', async () => {
    const page = new AppPage();
    const events = page.package.getEvents();
    page.answer([{ eventId: 'view' }]);
    assert.equal(JSON.stringify(await events), '[{"eventId":"view"}]');
});
