import assert from 'node:assert/strict';
import { join } from 'node:path';
import { after, test } from 'node:test';
import { gzipSync } from 'node:zlib';
import { build } from 'esbuild';
import { publint } from 'publint';
import { folders } from '../tools/folders.mjs';
import { InstalledPackage } from './installed-package.js';

const installed = new InstalledPackage();
after(() => installed.remove());

const types = (name: string) => join(folders.page, 'tests/types', name);
const resolutions = [
    { module: 'NodeNext', moduleResolution: 'NodeNext' },
    { module: 'ESNext', moduleResolution: 'Bundler' },
];
for (const options of resolutions) {
    test(`what must compile does, and what must not does not, with ${options.moduleResolution}`, () => {
        assert.equal(installed.compile(types('undeclared'), options), '');
        assert.equal(installed.compile(types('declared'), options), '');
    });
}

test('with exact optional properties it compiles as well', () => {
    const options = { ...resolutions[0], exactOptionalPropertyTypes: true };
    assert.equal(installed.compile(types('undeclared'), options), '');
});

test('each entry can be imported on a server', () => {
    for (const entry of ['', '/stand-in', '/testing']) {
        const program = `console.log(Object.keys(await import('@zelvora/page-bridge${entry}')).length > 0, typeof window)`;
        assert.equal(installed.run(program), 'true undefined', entry);
    }
});

test('what a server imports tells that there is no app', () => {
    const program = `import { isInApp, hasAction } from '@zelvora/page-bridge'; console.log(isInApp(), hasAction('share'))`;
    assert.equal(installed.run(program), 'false false');
});

test('publint has no complaint', async () => {
    const { messages } = await publint({ pkgDir: folders.package, strict: true });
    assert.deepEqual(messages, []);
});

test('what is packed is what is built, with its types', () => {
    assert.deepEqual(
        installed.files.filter((file) => !/^package\/dist\/.*\.(js|d\.ts)$/.test(file)),
        ['package/README.md', 'package/package.json'],
    );
    for (const file of ['index', 'stand-in/index', 'testing/index'])
        for (const extension of ['js', 'd.ts'])
            assert.ok(installed.files.includes(`package/dist/${file}.${extension}`), `${file}.${extension}`);
    assert.ok(installed.files.includes('package/dist/classic.js'));
});

async function gzippedSize(contents: string) {
    const { outputFiles } = await build({
        stdin: { contents, resolveDir: installed.folder },
        bundle: true,
        minify: true,
        format: 'esm',
        target: 'safari16',
        write: false,
        logLevel: 'error',
    });
    return gzipSync(outputFiles[0]!.contents, { level: 9 }).length;
}

const sizes: [string, string, number][] = [
    ['the main entry', "export * from '@zelvora/page-bridge'", 1500],
    ['a page that only saves events', "import { saveEvent } from '@zelvora/page-bridge'; saveEvent({ eventId: 'view' })", 500],
    ['the double for tests', "export * from '@zelvora/page-bridge/testing'", 700],
    ['the stand-in', "export * from '@zelvora/page-bridge/stand-in'", 5000],
];
for (const [name, page, most] of sizes)
    test(`${name} takes at most ${most} bytes, gzipped`, async (context) => {
        const size = await gzippedSize(page);
        context.diagnostic(`${name}: ${size} bytes`);
        assert.ok(size <= most, `${size} bytes`);
    });

test('what a page does not call is not in its bundle', async () => {
    assert.ok((await gzippedSize("import '@zelvora/page-bridge'; import '@zelvora/page-bridge/stand-in'")) <= 20);
});
