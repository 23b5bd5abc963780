import { check } from './bridge-error.js';

/** What a frame posts to the main frame, with a port through which the answer comes back. */
export interface FrameQuestion {
    zelvoraAsks: true;
    /** Of the value. Without it, the question is about the events. */
    key: string | undefined;
    timeout: number;
}

/**
 * The name of an empty frame in the main frame that says that frames of this origin may ask. Names of frames are all that a
 * page of another origin can see of the main frame at once.
 */
export function shareName(origin: string): string {
    return `zelvora-shares ${origin}`;
}

function mayAsk(): boolean {
    try {
        return !!(top as unknown as Record<string, unknown>)[shareName(origin)];
    } catch {
        return false;
    }
}

export function askMainFrame(key: string | undefined, timeout: number, answer: (value: unknown) => void): void {
    check(
        mayAsk(),
        `Only the main frame gets answers. There, first call shareWithFrames({ origins: ['${origin}'] }).`,
        'frame',
    );
    const { port1, port2 } = new MessageChannel();
    port1.onmessage = ({ data }) => {
        port1.close();
        answer(data);
    };
    top!.postMessage({ zelvoraAsks: true, key, timeout } satisfies FrameQuestion, '*', [port2]);
}
