import { invoke } from '@zelvora/page-bridge';

declare module '@zelvora/page-bridge' {
    interface CustomActions {
        share: string;
        openCart: { id: string };
        refresh: void;
        search: string | { words: string[] };
        hint: string | void;
        countUp: number;
        choose: string | number;
        onDone: () => void;
    }
}

invoke('share', 'text');
// @ts-expect-error: the action takes text
invoke('share', 5);
// @ts-expect-error: the action takes text
invoke('share', { id: 'moon-jar' });
// @ts-expect-error: the action takes text
invoke('share');

invoke('openCart', { id: 'moon-jar' });
// @ts-expect-error: the action takes another object
invoke('openCart', { name: 'moon-jar' });
// @ts-expect-error: the action takes an object
invoke('openCart', 'moon-jar');

invoke('refresh');
// @ts-expect-error: the action takes nothing
invoke('refresh', 'text');

invoke('search', 'jar');
invoke('search', { words: ['moon', 'jar'] });

invoke('hint');
invoke('hint', 'text');

// @ts-expect-error: a number would not arrive, even if it is declared
invoke('countUp', 5);
invoke('choose', 'a');
// @ts-expect-error: a number would not arrive, even if it is declared
invoke('choose', 5);

// @ts-expect-error: a function would not arrive, even if it is declared
invoke('onDone', () => {});

// @ts-expect-error: the app has no such action
invoke('order', 'text');

window.ZelvoraSDKBridge?.share?.('text');
window.ZelvoraSDKBridge?.openCart?.({ id: 'moon-jar' });
// @ts-expect-error: the action takes text
window.ZelvoraSDKBridge?.share?.(5);
// @ts-expect-error: the app may lack the action
window.ZelvoraSDKBridge?.share('text');
