// Builds the package into build/page/package, as it is packed, and the tests into build/page/tests.
import { execFileSync } from 'node:child_process';
import { cpSync, existsSync, mkdirSync, readFileSync, readdirSync, rmSync, symlinkSync, writeFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { build } from 'esbuild';
import { folders } from './folders.mjs';

const sources = join(folders.page, 'src');
const bridgeScript = join(folders.build, 'generated/bridge-script.ts');
const shared = { bundle: true, target: 'safari16', alias: { 'zelvora-bridge-script': bridgeScript } };

function clean() {
    rmSync(folders.package, { recursive: true, force: true });
    rmSync(folders.tests, { recursive: true, force: true });
    mkdirSync(folders.package, { recursive: true });
}

// The stand-in and the tests run the very script that the SDK injects.
function generateBridgeScript() {
    const program = join(folders.page, 'tools/bridge-script.sed');
    const source = join(folders.project, 'ZelvoraIOS/internal/BridgeScript.cpp');
    mkdirSync(dirname(bridgeScript), { recursive: true });
    writeFileSync(bridgeScript, execFileSync('sed', ['-n', '-f', program, source]));
}

async function buildModules() {
    await build({
        ...shared,
        entryPoints: ['index.ts', 'stand-in/index.ts', 'testing/index.ts'].map((file) => join(sources, file)),
        outdir: join(folders.package, 'dist'),
        splitting: true,
        format: 'esm',
    });
}

async function buildClassicScripts() {
    await build({
        ...shared,
        entryPoints: [join(sources, 'index.ts')],
        outfile: join(folders.package, 'dist/classic.js'),
        minify: true,
        format: 'iife',
        globalName: 'ZelvoraPageBridge',
    });
    await build({
        ...shared,
        entryPoints: [join(sources, 'stand-in/classic.ts')],
        outfile: join(folders.package, 'dist/stand-in/classic.js'),
        minify: true,
        format: 'iife',
    });
}

function writeDeclarations() {
    const compiler = join(folders.page, 'node_modules/typescript/bin/tsc');
    const options = ['-p', join(folders.page, 'tsconfig.declarations.json'), '--outDir', join(folders.package, 'dist')];
    execFileSync(process.execPath, [compiler, ...options], { stdio: 'inherit' });
}

// The tools and scripts of the sources are nothing to those who install the package.
function writeManifest() {
    const manifest = JSON.parse(readFileSync(join(folders.page, 'package.json'), 'utf8'));
    delete manifest.devDependencies;
    delete manifest.scripts;
    writeFileSync(join(folders.package, 'package.json'), `${JSON.stringify(manifest, null, 2)}\n`);
    cpSync(join(folders.page, 'README.md'), join(folders.package, 'README.md'));
}

// For page authors, who install this file.
function pack() {
    for (const file of readdirSync(folders.build).filter((name) => name.endsWith('.tgz')))
        rmSync(join(folders.build, file));
    execFileSync('npm', ['pack', folders.package, '--pack-destination', folders.build], { stdio: 'pipe' });
}

async function buildTests() {
    await build({
        entryPoints: readdirSync(join(folders.page, 'tests'))
            .filter((file) => file.endsWith('.test.ts'))
            .map((file) => join(folders.page, 'tests', file)),
        outdir: folders.tests,
        outExtension: { '.js': '.mjs' },
        ...shared,
        packages: 'external',
        platform: 'node',
        target: 'node18',
        format: 'esm',
        sourcemap: 'inline',
    });
    const modules = join(folders.build, 'node_modules');
    if (!existsSync(modules)) {
        rmSync(modules, { force: true });
        symlinkSync(join(folders.page, 'node_modules'), modules);
    }
}

clean();
generateBridgeScript();
await Promise.all([buildModules(), buildClassicScripts(), buildTests()]);
writeDeclarations();
writeManifest();
pack();
