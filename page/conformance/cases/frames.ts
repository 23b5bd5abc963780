import { bridge, type Case, emptyQueue, newName, read, readEvents, recorder, until } from '../case.js';

/** Opens a frame that does as it is told. */
async function openFrame(origin: string, sandbox?: string): Promise<{ ask(script: string): Promise<any>; close(): void }> {
    const frame = document.createElement('iframe');
    if (sandbox !== undefined)
        frame.sandbox.value = sandbox;
    frame.src = `${origin}/frame.html`;
    const loaded = new Promise((resolve) => frame.addEventListener('load', resolve));
    document.body.append(frame);
    await loaded;
    const ask = (script: string) =>
        new Promise((resolve) => {
            const channel = new MessageChannel();
            channel.port1.onmessage = (message) => resolve(message.data);
            frame.contentWindow?.postMessage(script, '*', [channel.port2]);
        });
    return { ask, close: () => frame.remove() };
}

const here = () => location.href.replace(/\/[^/]*$/, '');
const elsewhere = () => (window as any).conformance.otherOrigin as string;

/** Runs the script in a frame, and waits until what it asked for has come. */
async function inFrame(origin: string, script: string, arrives: () => unknown, sandbox?: string): Promise<any> {
    const frame = await openFrame(origin, sandbox);
    const answer = await frame.ask(script);
    await until(arrives);
    frame.close();
    return answer;
}

export const frames: Case[] = [
    {
        name: 'a frame has the bridge',
        expected: ['function', 'function', 'function'],
        run: async () => {
            const script = 'typeof ZelvoraSDKBridge.setItem';
            return [
                await inFrame(here(), script, () => true),
                await inFrame(elsewhere(), script, () => true),
                await inFrame(here(), script, () => true, 'allow-scripts'),
            ];
        },
    },
    {
        name: 'a frame stores values for the page',
        expected: ['same', 'other', 'sandboxed'],
        run: async () => {
            const store = async (value: string, origin: string, sandbox?: string) => {
                const key = newName();
                await inFrame(origin, `ZelvoraSDKBridge.setItem('${key}', '${value}')`, () => read(key), sandbox);
                return read(key);
            };
            return [
                await store('same', here()),
                await store('other', elsewhere()),
                await store('sandboxed', here(), 'allow-scripts'),
            ];
        },
    },
    {
        name: 'a frame saves events',
        expected: [{ from: 'frame' }],
        run: async () => {
            emptyQueue();
            await inFrame(elsewhere(), "ZelvoraSDKBridge.saveEvent({ from: 'frame' })", async () => (await readEvents()).length);
            return readEvents();
        },
    },
    {
        name: 'what a frame asks for is answered in the main frame, and not in the frame',
        expected: [['value'], []],
        run: async () => {
            const { name, calls } = recorder();
            const key = newName();
            bridge().setItem(key, 'value');
            const frame = await openFrame(elsewhere());
            await frame.ask(`window.calls = []; window['${name}'] = (value) => calls.push(value); 0`);
            await frame.ask(`ZelvoraSDKBridge.getItem('${key}', '${name}')`);
            await until(() => calls.length);
            const inside = await frame.ask('calls');
            frame.close();
            return [calls, inside];
        },
    },
    {
        name: 'a frame may name any script of the main frame as its callback',
        expected: 'true',
        run: async () => {
            const name = newName();
            await inFrame(
                here(),
                `ZelvoraSDKBridge.getItem('none', 'window.${name} = String(window === top), String')`,
                () => (window as any)[name],
                'allow-scripts',
            );
            return (window as any)[name];
        },
    },
];
