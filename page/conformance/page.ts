import { bridge, type Case, emptyQueue, type World } from './case.js';
import { actions } from './cases/actions.js';
import { answers } from './cases/answers.js';
import { events } from './cases/events.js';
import { footer } from './cases/footer.js';
import { frames } from './cases/frames.js';
import { items } from './cases/items.js';
import { packageInAnyApp, packageWithActions } from './cases/package.js';
import { script } from './cases/script.js';
import { values } from './cases/values.js';

/** What a case came to in one app. */
export interface Outcome {
    name: string;
    expected: unknown;
    answer: unknown;
}

const cases: Record<World, readonly Case[]> = {
    bare: [...script, ...values, ...items, ...answers, ...events, ...footer, ...frames, ...packageInAnyApp],
    actions: [...actions, ...packageWithActions],
};

/** In milliseconds. */
function timeLimit(patience: number): Promise<string> {
    return new Promise((resolve) => setTimeout(resolve, patience, 'no answer'));
}

async function answerOf(run: () => unknown, patience: number): Promise<unknown> {
    try {
        // What JSON lacks becomes what it would be in the report.
        return JSON.parse(JSON.stringify((await Promise.race([run(), timeLimit(patience)])) ?? null));
    } catch (error) {
        return `failed: ${error}`;
    }
}

/** What drives the page, in an app or a browser, uses it. */
const conformance = {
    /** An origin with the same frame as this page's. */
    otherOrigin: '',
    /** The case that is running. */
    current: '',
    /** Set once all cases of a world have run. */
    outcomes: undefined as Outcome[] | undefined,

    async run(world: World, otherOrigin: string, patience = 10_000): Promise<void> {
        conformance.otherOrigin = otherOrigin;
        const outcomes = [];
        for (const { name, expected, run } of cases[world]) {
            conformance.current = name;
            outcomes.push({ name, expected, answer: await answerOf(run, patience) });
        }
        conformance.outcomes = outcomes;
    },

    /** The screen closes, so that only the app can tell what became of it. */
    close(): void {
        emptyQueue();
        bridge().saveEvent({ eventId: 'last', note: null });
        bridge().close();
    },
};

Object.assign(window, { conformance });
