import { ask } from './answers.js';
import { bridge } from './app.js';
import { check } from './bridge-error.js';
import { type FrameQuestion, shareName } from './main-frame.js';

/**
 * Makes `getItem` and `getEvents` work in frames of these origins, and of no other. Call it in the main frame before the
 * frames load.
 */
export function shareWithFrames({ origins }: { origins: readonly string[] }): void {
    bridge();
    check(window.top === window, 'Only the main frame gets answers.', 'frame');
    for (const origin of origins)
        check(new URL(origin).origin === origin, `Write "${new URL(origin).origin}", not "${origin}".`);

    window.addEventListener('message', ({ data, origin, ports: [port] }: MessageEvent<FrameQuestion | undefined>) => {
        if (data?.zelvoraAsks && port && origins.includes(origin))
            // The frame has a time-out of its own, which ends when this one does.
            ask(data.key, data).then((value) => port.postMessage(value), () => {});
    });
    // Outside of the body, whose content frameworks replace.
    for (const origin of origins)
        document.documentElement.append(
            Object.assign(document.createElement('iframe'), { name: shareName(origin), hidden: true }),
        );
}
