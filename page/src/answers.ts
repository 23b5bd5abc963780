import { bridge } from './app.js';
import { BridgeError } from './bridge-error.js';
import { askMainFrame } from './main-frame.js';

export interface AnswerOptions {
    /** How long to wait, in milliseconds: 5000 unless told, at most 2147483647. */
    timeout?: number | undefined;
}

type Waiting = Record<string, (answer: unknown) => void>;

// The functions that the app calls with its answers. Each goes with its answer or its time-out. An answer that comes too late
// finds a function that does nothing, so that the page sees no error.
function waitingForAnswers(): Waiting {
    const page = window as { __zelvoraAnswers?: Waiting };
    return (page.__zelvoraAnswers ??= new Proxy<Waiting>({}, {
        get: (waiting, name) => waiting[name as string] ?? (() => {}),
    }));
}

let count = 0;

// The name must differ from those of the page that was here before, whose answers may still come, and from those of another
// copy of this package.
function nextName() {
    return `a${++count}_${Math.floor(Math.random() * 1e9)}`;
}

/**
 * The value of the key or, without one, the events. Rejects with a `BridgeError` if no answer can come, or none does in time.
 */
export async function ask(key: string | undefined, { timeout = 5000 }: AnswerOptions = {}): Promise<unknown> {
    const app = bridge();
    const waiting = waitingForAnswers();
    const name = nextName();
    const path = `__zelvoraAnswers.${name}`;
    let timer: ReturnType<typeof setTimeout> | undefined;
    try {
        return await new Promise((resolve, reject) => {
            timer = setTimeout(() => reject(new BridgeError('timeout', `No answer in ${timeout} ms.`)), timeout);
            waiting[name] = resolve;
            if (window.top !== window)
                askMainFrame(key, timeout, resolve);
            else if (key === undefined)
                app.getEvents(path);
            else
                app.getItem(key, path);
        });
    } finally {
        clearTimeout(timer);
        delete waiting[name];
    }
}
