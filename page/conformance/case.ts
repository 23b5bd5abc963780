/** One rule of the bridge that a page can see. Every app has to give the same answer. */
export interface Case {
    /** A sentence of behaviour. */
    name: string;
    /** What the page is answered, as JSON holds it. */
    expected: unknown;
    run(): unknown;
}

/** A case runs in an app without actions of its own, or in one that has some. */
export type World = 'bare' | 'actions';

/** Without types, as most cases pass what they would refuse. */
export function bridge(): any {
    return window.ZelvoraSDKBridge;
}

/** Past the bridge's functions, as any script of a page can do. */
export function post(body: unknown): void {
    (window as any).webkit.messageHandlers.zelvora.postMessage(body);
}

let count = 0;

/** A new name for a key or a callback, so that no case meets what another one left. */
export function newName(): string {
    count += 1;
    return `name${count}`;
}

/** Makes a global function that fulfils the promise. */
export function callback(): { name: string; answer: Promise<any> } {
    const name = newName();
    const answer = new Promise((resolve) => Object.assign(window, { [name]: resolve }));
    return { name, answer };
}

export function read(key: string): Promise<any> {
    const { name, answer } = callback();
    bridge().getItem(key, name);
    return answer;
}

export function readEvents(): Promise<any> {
    const { name, answer } = callback();
    bridge().getEvents(name);
    return answer;
}

/** Stores the value over an earlier one, and reads what is stored then. */
export function readBack(value: unknown, key = newName()): Promise<any> {
    bridge().setItem(key, 'earlier');
    bridge().setItem(key, value);
    return read(key);
}

export async function readBackAll(values: readonly unknown[]): Promise<unknown[]> {
    return Promise.all(values.map((value) => readBack(value)));
}

/** A global function that notes what it is called with. */
export function recorder(): { name: string; calls: unknown[] } {
    const name = newName();
    const calls: unknown[] = [];
    Object.assign(window, { [name]: (value: unknown) => calls.push(value) });
    return { name, calls };
}

/** Fulfilled once everything that was posted before has been answered. */
export async function settled(): Promise<void> {
    await read(newName());
}

/** Lets the page do what waits. A timer would be slowed down where the page cannot be seen. */
function nextTask(): Promise<unknown> {
    return new Promise((resolve) => {
        const { port1, port2 } = new MessageChannel();
        port1.onmessage = resolve;
        port2.postMessage(null);
    });
}

/** Waits for what comes when it comes: the work of a frame, or of the app. If it does not, the case fails by its time. */
export async function until(condition: () => unknown): Promise<void> {
    while (!(await condition()))
        await nextTask();
}

/** What the page hears of while the work is done: what it throws, and what comes to the window. */
export async function troubleOf(work: () => void): Promise<string[]> {
    const trouble: string[] = [];
    const onError = (event: ErrorEvent) => {
        trouble.push(`error ${event.error?.name ?? event.message}`);
        event.preventDefault();
    };
    const onRejection = (event: PromiseRejectionEvent) => {
        trouble.push(`rejection ${event.reason?.name}`);
        event.preventDefault();
    };
    window.addEventListener('error', onError);
    window.addEventListener('unhandledrejection', onRejection);
    try {
        work();
    } catch (error) {
        trouble.push(`exception ${(error as Error).name}`);
    }
    await settled();
    await settled();
    window.removeEventListener('error', onError);
    window.removeEventListener('unhandledrejection', onRejection);
    return trouble;
}

/** Asks the app for what a page cannot do: it answers by storing a value. */
export async function order(name: string, members: object = {}): Promise<any> {
    const id = newName();
    post({ action: 'invokeCustomAction', name: 'control', data: JSON.stringify({ id, order: name, ...members }) });
    await until(async () => (await read('control'))?.[0] === id);
    return (await read('control'))[1];
}

export function passTime(seconds: number): Promise<unknown> {
    return order('passTime', { seconds });
}

export function emptyQueue(): void {
    bridge().removeItem('tracking_event');
}

/** What the app's actions were called with since this was last asked. */
export function received(): Promise<{ name: string; data?: string }[]> {
    return order('received');
}
