import {
    BridgeError,
    close,
    getEvents,
    getItem,
    hasAction,
    invoke,
    isInApp,
    removeItem,
    saveEvent,
    setFooterVisible,
    setItem,
    shareWithFrames,
    type Json,
    type SavedEvent,
} from '@zelvora/page-bridge';

declare function is<Type>(value: Type): void;

interface Line {
    id: string;
    count: number;
    note?: string;
}
declare const lines: Line[];
declare const line: Line;
declare const maybeText: string | null;
declare const maybeUndefined: string | undefined;
declare const anything: Json;
declare const saved: SavedEvent;
declare const members: Record<string, Json>;

// Values.
setItem('cart', lines);
setItem('cart', lines, 60);
setItem('cart', line);
setItem('name', '달항아리');
setItem('count', 5);
setItem('seen', true);
setItem('mixed', { list: [1, 'a', null, { deep: false }], none: null });
setItem('readonly', [1, 2] as const);
setItem('last', saved);
// @ts-expect-error: a key is text
setItem(1, 'value');
// @ts-expect-error: null is no value
setItem('key', null);
// @ts-expect-error: it may be null
setItem('key', maybeText);
// @ts-expect-error: it may be null
setItem('key', anything);
// @ts-expect-error: undefined is no value
setItem('key', undefined);
// @ts-expect-error: there is no value
setItem('key');
// @ts-expect-error: a date would come back as null
setItem('key', new Date());
// @ts-expect-error: the whole object would come back as null
setItem('key', { at: new Date() });
// @ts-expect-error: JSON has no functions
setItem('key', { show() {} });
// @ts-expect-error: JSON has no big integers
setItem('key', 5n);
// @ts-expect-error: JSON has no maps
setItem('key', new Map());
// @ts-expect-error: an expiry is a number
setItem('key', 1, '60');
// @ts-expect-error: an expiry is a number, or left out
setItem('key', 1, null);

// Answers.
is<Promise<Line[] | null>>(getItem<Line[]>('cart'));
is<Promise<unknown>>(getItem('cart'));
is<Promise<SavedEvent[] | null>>(getEvents({ timeout: 100 }));
// @ts-expect-error: one of them may be unreadable
void getEvents().then((events) => events.length);
void getItem('cart', { timeout: 100 });
void getItem('cart', {});
// @ts-expect-error: a time is a number
void getItem('cart', { timeout: '100' });
// @ts-expect-error: the answer is a promise, not a call of a function of the page
void getItem('cart', 'onCart');
// @ts-expect-error: the value may be missing
void getItem<Line[]>('cart').then((cart) => cart.length);
removeItem('cart');
// @ts-expect-error: a key is text
removeItem(5);

// Events.
saveEvent({ eventId: 'view' });
saveEvent({ eventId: 'cart_add', items: lines, coupon: null, gift: false });
saveEvent(line);
saveEvent(saved);
saveEvent({ eventId: 'view', ...members });
// @ts-expect-error: an event is an object, not its text
saveEvent('{"eventId":"view"}');
// @ts-expect-error: an event is one object
saveEvent([{ eventId: 'view' }]);
// @ts-expect-error: an event is an object
saveEvent(null);
// @ts-expect-error: a date stops the uploads
saveEvent({ at: new Date() });
// @ts-expect-error: a date stops the uploads, at any depth
saveEvent({ deep: [{ at: new Date() }] });
// @ts-expect-error: JSON has no undefined
saveEvent({ eventId: 'view', referrer: undefined });
// @ts-expect-error: it may be undefined
saveEvent({ eventId: 'view', referrer: maybeUndefined });
// @ts-expect-error: JSON has no big integers
saveEvent({ count: 1n });
// @ts-expect-error: an array is no object
saveEvent(lines);

// The footer and the screen.
setFooterVisible(true);
// @ts-expect-error: the flag is a boolean
setFooterVisible('false');
// @ts-expect-error: the flag is a boolean
setFooterVisible(0);
close();

// Without declared actions each name will do, with text, an object or nothing.
is<boolean>(isInApp());
is<boolean>(hasAction('share'));
invoke('share', 'text');
invoke('openCart', { id: 'moon-jar' });
invoke('refresh');
// @ts-expect-error: the action would get no data
invoke('share', 5);
// @ts-expect-error: the action would get no data
invoke('share', true);
// @ts-expect-error: the action would get no data
invoke('share', false);
// @ts-expect-error: an action takes one value
invoke('share', 'a', 'b');

shareWithFrames({ origins: ['https://frames.example'] });
// @ts-expect-error: origins are a list
shareWithFrames({ origins: 'https://frames.example' });
// @ts-expect-error: without origins it would share with none
shareWithFrames({});

try {
    close();
} catch (error) {
    if (error instanceof BridgeError)
        is<'no-app' | 'kind' | 'frame' | 'timeout'>(error.reason);
}
