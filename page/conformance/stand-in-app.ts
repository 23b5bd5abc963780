import type { StandIn, StandInOptions } from '../src/stand-in/index.js';

// The app that the stand-in plays, in the page's own browser. Its actions note what they were called with, and one obeys
// the page, as that of the host app does.

const page = window as unknown as { zelvoraStandIn: StandInOptions | StandIn };
const standIn = () => page.zelvoraStandIn as StandIn;

let millisecondsAhead = 0;
const received: object[] = [];
const collected: object[] = [];

const orders: Record<string, (order: { seconds: number }) => unknown> = {
    passTime: ({ seconds }) => {
        millisecondsAhead += seconds * 1000;
        return true;
    },
    isFooterVisible: () => standIn().isFooterVisible,
    received: () => received.splice(0),
    upload: () => {
        collected.push(...standIn().upload());
        return true;
    },
    collected: () => collected,
};

function control(data = ''): void {
    const order = JSON.parse(data);
    const answer: any = orders[order.order]?.(order);
    window.ZelvoraSDKBridge?.setItem('control', [order.id, answer]);
}

const actions: NonNullable<StandInOptions['actions']> = {};
if (location.search === '?actions') {
    for (const name of ['share', 'close', '', '장바구니', 'a"b\\c'])
        actions[name] = (data) => received.push(data === undefined ? { name } : { name, data });
    actions.control = control;
}
// By now the bridge has its functions.
addEventListener('DOMContentLoaded', () => {
    actions.control = control;
});

page.zelvoraStandIn = {
    actions,
    now: () => Date.now() + millisecondsAhead,
    onClose: (uploaded) => Object.assign(window, { afterClose: { closed: true, uploaded: uploaded.at(-1) } }),
};
