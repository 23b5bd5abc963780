// Runs the suite in the app and in both browsers, and compares. ZELVORA_BUILD names the folder with the built example host.
import assert from 'node:assert/strict';
import { execFile } from 'node:child_process';
import { readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { promisify } from 'node:util';
import { startChromium } from '../browser/chromium.mjs';
import { startWebKit } from '../browser/webkit.mjs';
import { folders } from '../tools/folders.mjs';
import { buildForApp, buildForBrowsers, output } from './build.mjs';
import { compare, describe } from './report.mjs';
import { runInBrowser } from './run-in-browser.mjs';
import { seeds } from './seeds.mjs';

/** @typedef {import('./report.mjs').Report} Report */

const fewestCases = 100;

/** @returns {Promise<Report>} */
async function runInApp() {
    const report = join(output, 'app.json');
    const build = process.env.ZELVORA_BUILD ?? 'build/gcc';
    await promisify(execFile)('examples/conformance.sh', [build, await buildForApp(), report], { cwd: folders.project });
    return JSON.parse(readFileSync(report, 'utf8'));
}

/** @returns {Promise<Report>} */
async function runInWebKit() {
    const webkit = await startWebKit();
    try {
        return await runInBrowser(webkit, await buildForBrowsers());
    } finally {
        await webkit.stop();
    }
}

/** What differs may leave a case without an answer. @param {import('./run-in-browser.mjs').Browser} chromium */
function runSeeded(chromium) {
    const patience = 2_000;
    return Promise.all(seeds.map(async (seed) => runInBrowser(chromium, await buildForBrowsers(seed), patience)));
}

const app = await runInApp();
const webkit = await runInWebKit();
const chromium = await startChromium();
const plain = await runInBrowser(chromium, await buildForBrowsers());
const seeded = await runSeeded(chromium);
await chromium.stop();

const rows = compare({ app, WebKitGTK: webkit, Chromium: plain });
writeFileSync(join(output, 'report.txt'), describe(rows));

test('every case ran', () => {
    assert.ok(rows.length >= fewestCases, `${rows.length} cases`);
    const names = [...app.bare, ...app.actions].map(({ name }) => name);
    assert.equal(new Set(names).size, names.length, 'each has a name of its own');
});

for (const { name, expected, answers, isEqual } of rows)
    test(name, () => assert.ok(isEqual, `not all answers are ${JSON.stringify(expected)}: ${JSON.stringify(answers)}`));

seeds.forEach(({ what, noticedBy }, index) => {
    test(`the suite notices if ${what}`, () => {
        const compared = compare({ app, Chromium: /** @type {Report} */ (seeded[index]) });
        const failed = compared.filter((row) => !row.isEqual).map((row) => row.name);
        assert.deepEqual(noticedBy.filter((name) => !failed.includes(name)), [], `failed: ${failed.join('; ')}`);
        assert.ok(failed.length < compared.length / 2, 'the others are as they were');
    });
});
