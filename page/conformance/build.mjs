// Builds what the conformance suite shows: the page for the app's service, and for browsers, with the stand-in.
import { cpSync, mkdirSync, readFileSync, rmSync } from 'node:fs';
import { basename, join } from 'node:path';
import { build } from 'esbuild';
import { folders } from '../tools/folders.mjs';

const sources = join(folders.page, 'conformance');
export const output = join(folders.build, 'conformance');
const bridgeScript = join(folders.build, 'generated/bridge-script.ts');

/** @param {string} folder */
function copyPages(folder) {
    mkdirSync(folder, { recursive: true });
    for (const file of ['index.html', 'frame.html'])
        cpSync(join(sources, 'site', file), join(folder, file));
}

/**
 * @param {string} entry
 * @param {string} file
 * @param {import('esbuild').Plugin[]} plugins
 */
async function bundle(entry, file, plugins = []) {
    await build({
        entryPoints: [entry],
        outfile: file,
        bundle: true,
        format: 'iife',
        target: 'safari16',
        alias: { 'zelvora-bridge-script': bridgeScript },
        plugins,
        logLevel: 'warning',
    });
}

/** The site of the service that the app talks to. */
export async function buildForApp() {
    const site = join(output, 'app');
    rmSync(site, { recursive: true, force: true });
    for (const host of ['shop', 'frames'])
        copyPages(join(site, host));
    await bundle(join(sources, 'page.ts'), join(site, 'shop/page.js'));
    return site;
}

/**
 * A change of the stand-in's sources, to see that the suite notices it.
 * @typedef {{ name: string, what: string, file: string, from: string, to: string }} Seed
 */

/** @param {Seed} seed @returns {import('esbuild').Plugin} */
function seeded({ file, from, to }) {
    return {
        name: 'seed',
        setup({ onLoad }) {
            onLoad({ filter: new RegExp(`/stand-in/${file}$`) }, ({ path }) => {
                const parts = readFileSync(path, 'utf8').split(from);
                if (parts.length !== 2)
                    throw new Error(`${basename(path)} does not have once: ${from}`);
                return { contents: parts.join(to), loader: 'ts' };
            });
        },
    };
}

/** The site of a server that puts the stand-in into each page. @param {Seed} [seed] */
export async function buildForBrowsers(seed) {
    const folder = join(output, seed ? `seed-${seed.name}` : 'browser');
    const [site, standIn] = [join(folder, 'site'), join(folder, 'stand-in.js')];
    rmSync(folder, { recursive: true, force: true });
    copyPages(site);
    await bundle(join(sources, 'page.ts'), join(site, 'page.js'));
    await bundle(join(sources, 'stand-in-app.ts'), join(site, 'stand-in.js'));
    await bundle(join(folders.page, 'src/stand-in/classic.ts'), standIn, seed ? [seeded(seed)] : []);
    return { site, standIn };
}
