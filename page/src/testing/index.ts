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

export interface FakeBridge {
    /** Every call so far: its name and its arguments. */
    readonly calls: [name: string, ...values: unknown[]][];
    /** The values that the app has now. */
    readonly items: Record<string, unknown>;
    /** The events that wait for upload. */
    readonly events: object[];
    /** Gives the oldest answer that has not been given. False if there is none. */
    answer(): boolean;
    /** Puts back what was there before. */
    restore(): void;
}

type AnyFunction = (...values: any[]) => void;

// What crosses to the app, or back, is a copy.
function copyOf(value: unknown) {
    return JSON.parse(JSON.stringify(value));
}

function call(path: string, value: unknown) {
    const names = path.split('.');
    const last = names.pop()!;
    const holder = names.reduce((object: any, name) => object?.[name], window);
    holder?.[last]?.(value);
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
export function fakeBridge({ items = {}, actions = {}, answers = 'soon' }: FakeBridgeOptions = {}): FakeBridge {
    const calls: FakeBridge['calls'] = [];
    const stored: Record<string, unknown> = { ...items };
    const events: object[] = [];
    const waiting: (() => void)[] = [];
    const answer = () => {
        waiting[0]?.();
        return !!waiting.shift();
    };
    const answerLater = (callbackName: string, value: unknown) => {
        const given = copyOf(value);
        waiting.push(() => call(callbackName, given));
        if (answers === 'soon')
            queueMicrotask(answer);
    };
    const functions: Record<string, AnyFunction> = {
        close() {},
        setItem: (key, value) => (stored[key] = copyOf(value)),
        getItem: (key, callbackName) => answerLater(callbackName, Object.hasOwn(stored, key) ? stored[key] : null),
        removeItem: (key) => delete stored[key],
        saveEvent: (data) => events.push(copyOf(data)),
        getEvents: (callbackName) => answerLater(callbackName, events),
        setFooterVisible() {},
    };
    for (const [name, action] of Object.entries(actions))
        functions[name] = (data) => {
            const sent = typeof data === 'object' ? JSON.stringify(data) : data;
            action(typeof sent === 'string' && sent ? sent : null);
        };

    const bridge: Record<string, AnyFunction> = {};
    for (const [name, work] of Object.entries(functions))
        bridge[name] = (...values) => {
            calls.push([name, ...values]);
            work(...values);
        };
    const restore = install(bridge);
    return { calls, items: stored, events, answer, restore };
}
