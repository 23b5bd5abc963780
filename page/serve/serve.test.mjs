import assert from 'node:assert/strict';
import { mkdirSync, mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { request } from 'node:http';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, test } from 'node:test';
import { startServer, withScripts } from './server.mjs';

const folder = mkdtempSync(join(tmpdir(), 'page-serve-'));
const standIn = join(folder, '..', 'page-stand-in-of-test.js');
writeFileSync(standIn, 'window.isStandIn = true;');
mkdirSync(join(folder, 'shop'));
writeFileSync(join(folder, 'index.html'), '<!doctype html><head><title>Shop</title><script src="own.js"></script>');
writeFileSync(join(folder, 'shop/page.html'), '<p>No head</p>');
writeFileSync(join(folder, 'own.js'), '1;');
const server = await startServer({ folder, standIn, reloads: true });
after(async () => {
    await server.close();
    rmSync(folder, { recursive: true });
    rmSync(standIn);
});

const at = (/** @type {string} */ path) => fetch(`http://127.0.0.1:${server.port}${path}`);

test('the stand-in comes before the page\'s own first script', async () => {
    const page = await (await at('/')).text();
    assert.ok(page.indexOf('stand-in.js') > page.indexOf('<head>'), page);
    assert.ok(page.indexOf('stand-in.js') < page.indexOf('own.js'), page);
});

test('a page without a head has it too', async () => {
    assert.match(await (await at('/shop/page.html')).text(), /stand-in\.js.*No head/);
    assert.equal(withScripts('<HTML lang="ko"><p>', '<script>'), '<HTML lang="ko"><script><p>');
    assert.equal(withScripts('<!doctype html>\n<p>', '<script>'), '<!doctype html><script>\n<p>');
});

test('the options of the folder come before the stand-in', async () => {
    writeFileSync(join(folder, 'stand-in.js'), 'window.zelvoraStandIn = {};');
    assert.match(await (await at('/')).text(), /"\/stand-in\.js".*"\/@zelvora\/stand-in\.js"/);
    rmSync(join(folder, 'stand-in.js'));
});

test('other files are served as they are, with their types', async () => {
    const script = await at('/own.js');
    assert.equal(script.headers.get('content-type'), 'text/javascript; charset=utf-8');
    assert.equal(await script.text(), '1;');
    assert.equal(await (await at('/@zelvora/stand-in.js')).text(), 'window.isStandIn = true;');
});

/** As `fetch` would not send it. @param {string} path @returns {Promise<number | undefined>} */
function statusOf(path) {
    return new Promise((fulfil, reject) => {
        const sent = request({ host: '127.0.0.1', port: server.port, path }, (answer) => fulfil(answer.resume().statusCode));
        sent.on('error', reject).end();
    });
}

test('no address leads out of the folder', async () => {
    for (const path of ['/../page-stand-in-of-test.js', '/%2e%2e/page-stand-in-of-test.js', '/..%2fpage-stand-in-of-test.js', '/none', '/shop'])
        assert.equal(await statusOf(path), 404, path);
    assert.equal(await statusOf('/%'), 200, 'what is no address is the first page');
});

test('pages hear of a change, in a new folder too', { timeout: 20_000 }, async () => {
    const changes = (await at('/@zelvora/changes')).body?.getReader();
    writeFileSync(join(folder, 'own.js'), '2;');
    assert.equal(String(Buffer.from((await changes?.read())?.value ?? [])), 'data:\n\n');
    mkdirSync(join(folder, 'new'));
    await changes?.read();
    writeFileSync(join(folder, 'new/file.css'), 'p {}');
    assert.equal(String(Buffer.from((await changes?.read())?.value ?? [])), 'data:\n\n');
    await changes?.cancel();
});
