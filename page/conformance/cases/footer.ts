import { bridge, type Case, order } from '../case.js';

async function footerAfter(...flags: unknown[]): Promise<boolean[]> {
    const visible = [];
    for (const flag of flags) {
        bridge().setFooterVisible(flag);
        visible.push(await order('isFooterVisible'));
    }
    bridge().setFooterVisible(true);
    return visible;
}

export const footer: Case[] = [
    {
        name: 'a page shows and hides the footer',
        expected: [true, false, false, true],
        run: () => footerAfter(true, false, false, true),
    },
    {
        name: 'only a boolean switches the footer',
        expected: [true, true, true, true, true, true, false, false, false],
        run: () => footerAfter('false', 0, null, undefined, [], new Boolean(false), false, 'true', 1),
    },
];
