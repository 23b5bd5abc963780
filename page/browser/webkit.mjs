import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { createServer } from 'node:net';

const miniBrowser = '/usr/lib/x86_64-linux-gnu/webkitgtk-6.0/MiniBrowser';
const pollMilliseconds = 50;

async function freePort() {
    const server = createServer().listen(0, '127.0.0.1');
    await once(server, 'listening');
    const { port } = /** @type {import('node:net').AddressInfo} */ (server.address());
    server.close();
    return port;
}

/** @param {number} milliseconds */
function pause(milliseconds) {
    return new Promise((fulfil) => setTimeout(fulfil, milliseconds));
}

/** @param {() => Promise<any>} ask @param {number} timeout */
async function poll(ask, timeout) {
    const deadline = Date.now() + timeout;
    while (Date.now() < deadline) {
        const answer = await ask();
        if (answer)
            return answer;
        await pause(pollMilliseconds);
    }
    throw new Error(`It did not come within ${timeout} ms.`);
}

/** The engine of the app, in a browser: WebKitGTK's own, driven by the protocol of browsers' drivers. Needs a display. */
export async function startWebKit() {
    const port = await freePort();
    const driver = spawn('WebKitWebDriver', ['--host=127.0.0.1', `--port=${port}`], { stdio: 'ignore' });
    const failed = new Promise((_, reject) => driver.once('error', reject));

    /** @param {string} method @param {string} path @param {object} [body] */
    async function command(method, path, body) {
        const response = await fetch(`http://127.0.0.1:${port}${path}`, { method, body: body && JSON.stringify(body) });
        const { value } = /** @type {any} */ (await response.json());
        if (value?.error)
            throw new Error(`${value.error}: ${value.message}`);
        return value;
    }

    const isReady = () => command('GET', '/status').then((status) => status.ready, () => false);
    await Promise.race([failed, poll(isReady, 20_000)]);
    const options = { 'webkitgtk:browserOptions': { binary: miniBrowser, args: ['--automation'] } };
    const { sessionId } = await command('POST', '/session', { capabilities: { alwaysMatch: options } });
    const session = `/session/${sessionId}`;

    return {
        /** @param {string} address @returns {Promise<import('../conformance/run-in-browser.mjs').Page>} */
        async open(address) {
            await command('POST', `${session}/url`, { url: address });
            /** @param {string} expression */
            const evaluate = (expression) =>
                command('POST', `${session}/execute/sync`, { script: `return (${expression})`, args: [] });
            return {
                waitFor: (expression) => poll(() => evaluate(expression), 120_000),
                evaluate,
                // The one window goes to the next address.
                close: async () => {},
            };
        },
        async stop() {
            await command('DELETE', session);
            driver.kill();
            await once(driver, 'exit');
        },
    };
}
