// Serves a folder of pages on this machine alone, with the stand-in before everything in each page.
import { createServer } from 'node:http';
import { existsSync } from 'node:fs';
import { readFile, stat } from 'node:fs/promises';
import { extname, join, resolve, sep } from 'node:path';
import { watchFolder } from './watch-folder.mjs';

/** @type {Record<string, string>} */
const types = {
    '.html': 'text/html; charset=utf-8',
    '.css': 'text/css; charset=utf-8',
    '.js': 'text/javascript; charset=utf-8',
    '.mjs': 'text/javascript; charset=utf-8',
    '.json': 'application/json',
    '.svg': 'image/svg+xml',
    '.png': 'image/png',
    '.jpg': 'image/jpeg',
    '.webp': 'image/webp',
    '.ico': 'image/x-icon',
    '.woff2': 'font/woff2',
    '.wasm': 'application/wasm',
};

// No page of a folder has such a path.
const standInPath = '/@zelvora/stand-in.js';
const changesPath = '/@zelvora/changes';
const reloadScript = `<script>new EventSource('${changesPath}').onmessage = () => location.reload();</script>`;

/**
 * Before the page's own first script, where the app's is.
 * @param {string} page
 * @param {string} scripts
 */
export function withScripts(page, scripts) {
    const place = /<head(\s[^>]*)?>/i.exec(page) ?? /<html(\s[^>]*)?>/i.exec(page) ?? /<!doctype[^>]*>/i.exec(page);
    const end = place ? place.index + place[0].length : 0;
    return page.slice(0, end) + scripts + page.slice(end);
}

/** @param {string | undefined} address */
function pathOf(address = '/') {
    try {
        return decodeURIComponent(new URL(address, 'http://localhost').pathname);
    } catch {
        return '/';
    }
}

/**
 * The file that an address names; undefined if it is not in the folder.
 * @param {string} folder
 * @param {string} path
 * @returns {Promise<string | undefined>}
 */
async function findFile(folder, path) {
    const file = resolve(folder, `.${path}`);
    if (file !== folder && !file.startsWith(folder + sep))
        return undefined;
    const found = await stat(file).catch(() => undefined);
    if (found?.isDirectory())
        return path.endsWith('/') ? findFile(folder, `${path}index.html`) : undefined;
    return found?.isFile() ? file : undefined;
}

/**
 * @param {object} options
 * @param {string} options.folder A file "stand-in.js" in it is run before the stand-in, and may give it options.
 * @param {string} options.standIn The stand-in as a classic script.
 * @param {number} [options.port]
 * @param {boolean} [options.reloads] Whether pages reload when a file changes.
 */
export async function startServer({ folder, standIn, port = 0, reloads = false }) {
    const root = resolve(folder);
    /** @type {Set<import('node:http').ServerResponse>} */
    const listeners = new Set();

    function injected() {
        const own = existsSync(join(root, 'stand-in.js')) ? '<script src="/stand-in.js"></script>' : '';
        return `${own}<script src="${standInPath}"></script>${reloads ? reloadScript : ''}`;
    }

    /** @param {string} path */
    async function contentsOf(path) {
        const file = path === standInPath ? standIn : await findFile(root, path);
        if (!file)
            return undefined;
        const type = types[extname(file).toLowerCase()] ?? 'application/octet-stream';
        const contents = await readFile(file);
        return { type, contents: extname(file) === '.html' ? withScripts(String(contents), injected()) : contents };
    }

    const server = createServer(async (request, response) => {
        const path = pathOf(request.url);
        if (path === changesPath) {
            response.writeHead(200, { 'Content-Type': 'text/event-stream', 'Cache-Control': 'no-store' }).flushHeaders();
            listeners.add(response);
            response.on('close', () => listeners.delete(response));
            return;
        }
        const found = await contentsOf(path).catch(() => undefined);
        response.writeHead(found ? 200 : 404, { 'Content-Type': found?.type ?? 'text/plain', 'Cache-Control': 'no-store' });
        response.end(found?.contents ?? 'There is no such page.\n');
    });
    await new Promise((fulfil, reject) => server.once('error', reject).listen(port, '127.0.0.1', () => fulfil(undefined)));

    const stopWatching = reloads ? watchFolder(root, () => listeners.forEach((listener) => listener.write('data:\n\n'))) : () => {};
    const address = /** @type {import('node:net').AddressInfo} */ (server.address());
    return {
        port: address.port,
        close() {
            stopWatching();
            server.closeAllConnections();
            return new Promise((fulfil) => server.close(fulfil));
        },
    };
}
