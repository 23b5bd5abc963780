/** An action of the app's. Its data is text, or `null` if the page passed nothing that the app takes. */
export type ActionHandler = (data: string | null) => void;

export interface FakeBridgeOptions {
    /** The values that the app has. */
    items?: Record<string, unknown>;
    /** The actions that the app registered. */
    actions?: Record<string, ActionHandler>;
    /** When the answers come: each at the next microtask, or when the test calls `answer()`. */
    answers?: 'soon' | 'by hand';
}

export type Call = [name: string, ...values: unknown[]];

export interface FakeBridge {
    /** Every call so far: its name and its arguments. */
    readonly calls: Call[];
    /** The values that the app has now. */
    readonly items: Record<string, unknown>;
    /** The events that wait for upload. */
    readonly events: object[];
    /** Gives the oldest answer that has not been given. False if there is none. */
    answer(): boolean;
    /** Puts back what was there before. */
    restore(): void;
}

type Functions = Record<string, (...values: any[]) => void>;

// What crosses to the app, or back, is a copy.
function copyOf(value: unknown) {
    return JSON.parse(JSON.stringify(value));
}

function callPath(path: string, value: unknown) {
    const names = path.split('.');
    const last = names.pop()!;
    const holder = names.reduce((object: any, name) => object?.[name], window);
    holder?.[last]?.(value);
}

function makeAnswers(when: FakeBridgeOptions['answers']) {
    const waiting: (() => void)[] = [];
    const give = () => {
        const next = waiting.shift();
        next?.();
        return !!next;
    };
    const add = (callbackName: string, value: unknown) => {
        const given = copyOf(value);
        waiting.push(() => callPath(callbackName, given));
        if (when !== 'by hand')
            queueMicrotask(give);
    };
    return { give, add };
}

// As the script that the app injects converts the data, and the app takes it.
function actionFunction(action: ActionHandler) {
    return (data: unknown) => {
        const sent = typeof data === 'object' ? JSON.stringify(data) : data;
        action(typeof sent === 'string' && sent ? sent : null);
    };
}

// Gives back what undoes it.
function install(bridge: object) {
    const place = globalThis as { window?: any; top?: any };
    const hadWindow = !!place.window;
    if (!hadWindow)
        place.window = place.top = globalThis;
    const { window } = place;
    const before = window.ZelvoraSDKBridge;
    window.ZelvoraSDKBridge = bridge;
    return () => {
        window.ZelvoraSDKBridge = before;
        if (!hadWindow) {
            delete place.window;
            delete place.top;
        }
    };
}

/**
 * Puts an app's bridge in `window`, and a window where there is none. It takes what the package sends: it does not refuse
 * what an app would, and nothing expires. For that there is the stand-in.
 */
export function fakeBridge(options: FakeBridgeOptions = {}): FakeBridge {
    const items: Record<string, unknown> = { ...options.items };
    const events: object[] = [];
    const answers = makeAnswers(options.answers);
    const functions: Functions = {
        close() {},
        setItem: (key, value) => (items[key] = copyOf(value)),
        getItem: (key, callbackName) => answers.add(callbackName, Object.hasOwn(items, key) ? items[key] : null),
        removeItem: (key) => delete items[key],
        saveEvent: (data) => events.push(copyOf(data)),
        getEvents: (callbackName) => answers.add(callbackName, events),
        setFooterVisible() {},
    };
    for (const [name, action] of Object.entries(options.actions ?? {}))
        functions[name] = actionFunction(action);

    const calls: Call[] = [];
    const bridge: Functions = {};
    for (const [name, work] of Object.entries(functions))
        bridge[name] = (...values) => {
            calls.push([name, ...values]);
            work(...values);
        };
    return { calls, items, events, answer: answers.give, restore: install(bridge) };
}
