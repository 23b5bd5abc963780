import type { Bridge } from '@zelvora/page-bridge';

// The object itself, with callbacks by name.
const bridge: Bridge | undefined = window.ZelvoraSDKBridge;
// @ts-expect-error: an ordinary browser does not have it
window.ZelvoraSDKBridge.close();
if (bridge) {
    bridge.close();
    bridge.setItem('cart', [1], 60);
    bridge.getItem('cart', 'onCart');
    bridge.getItem('cart', 'shop.onCart');
    bridge.removeItem('cart');
    bridge.saveEvent({ eventId: 'view' });
    bridge.getEvents('onEvents');
    bridge.setFooterVisible(false);
    bridge['share']?.('text');
    bridge['share']?.({ id: 1 });
    bridge['share']?.();
    // @ts-expect-error: without a callback there is no answer
    bridge.getItem('cart');
    // @ts-expect-error: a callback is named, not passed
    bridge.getItem('cart', () => {});
    // @ts-expect-error: null is no value
    bridge.setItem('cart', null);
    // @ts-expect-error: an event is an object
    bridge.saveEvent('{}');
    // @ts-expect-error: a date stops the uploads
    bridge.saveEvent({ at: new Date() });
    // @ts-expect-error: the flag is a boolean
    bridge.setFooterVisible('false');
    // @ts-expect-error: the app may lack the action
    bridge['share']('text');
}
