import { readFileSync } from 'node:fs';
import { join } from 'node:path';
import { type DOMWindow, JSDOM } from 'jsdom';
import { pieces } from 'zelvora-bridge-script';
import type * as Package from '../src/index.js';
import { folders } from '../tools/folders.mjs';

const classicScript = readFileSync(join(folders.package, 'dist/classic.js'), 'utf8');

/** The script that the app injects. */
export function bridgeScript(actions: readonly string[] = []): string {
    const insertions = Array<string>(pieces.length - 1).fill('zelvora');
    insertions[7] = JSON.stringify(actions);
    return pieces.map((piece, index) => piece + (insertions[index] ?? '')).join('');
}

class Clock {
    #now = 0;
    #timers = new Map<number, { at: number; run: () => void }>();
    #last = 0;

    constructor(window: DOMWindow) {
        Object.assign(window, {
            setTimeout: (run: () => void, delay: number) => {
                this.#timers.set(++this.#last, { at: this.#now + delay, run });
                return this.#last;
            },
            clearTimeout: (timer: number) => this.#timers.delete(timer),
        });
    }

    get timers(): number {
        return this.#timers.size;
    }

    advance(milliseconds: number): void {
        this.#now += milliseconds;
        for (const [timer, { at, run }] of this.#timers)
            if (at <= this.#now) {
                this.#timers.delete(timer);
                run();
            }
    }
}

export type Message = Record<string, unknown>;

/** A page with the package, in an app that keeps what the page posts. The test gives the answers, and moves the clock. */
export class AppPage {
    readonly window = new JSDOM('', { url: 'https://shop.example/', runScripts: 'dangerously' }).window;
    readonly clock = new Clock(this.window);
    readonly posted: Message[] = [];
    readonly package: typeof Package;

    constructor({ actions = [] as string[], isInApp = true } = {}) {
        if (isInApp)
            this.inject(this.window, actions);
        this.package = this.load(this.window);
    }

    inject(window: DOMWindow, actions: readonly string[] = []): void {
        const postMessage = (body: Message) => this.posted.push(withoutUndefined(structuredClone(body)));
        Object.assign(window, { webkit: { messageHandlers: { zelvora: { postMessage } } } });
        window.eval(bridgeScript(actions));
    }

    /** A copy of the package of its own. */
    load(window: DOMWindow): typeof Package {
        const script = window.document.createElement('script');
        script.textContent = classicScript;
        window.document.head.append(script);
        return window['ZelvoraPageBridge'] as typeof Package;
    }

    /** Answers in the app's way: a call of what the page named is evaluated in the main frame. */
    answer(value: unknown, message = this.posted.at(-1)): void {
        this.window.eval(`${message?.['callback']}(${JSON.stringify(value)});`);
    }

    get waiting(): number {
        return Object.keys(this.window['__zelvoraAnswers'] ?? {}).length;
    }
}

// The engine drops such members of a message.
function withoutUndefined(message: Message): Message {
    return Object.fromEntries(Object.entries(message).filter(([, value]) => value !== undefined));
}
