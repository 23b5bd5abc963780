import assert from 'node:assert/strict';
import { mkdirSync, readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { after, test } from 'node:test';
import ts from 'typescript';
import { folders } from '../tools/folders.mjs';
import { InstalledPackage } from './installed-package.js';

interface Sample {
    language: string;
    line: number;
    text: string;
}

const installed = new InstalledPackage();
after(() => installed.remove());

function samplesIn(guide: string): Sample[] {
    const text = readFileSync(join(folders.project, 'docs', guide), 'utf8');
    return [...text.matchAll(/^```(ts|js|html)\n(.*?)^```$/gms)].map((found) => ({
        language: found[1]!,
        line: text.slice(0, found.index).split('\n').length,
        text: found[2]!,
    }));
}

// The scripts of a page see the classic script's global object. They are checked as a page author's editor would.
const classicGlobal = "declare const ZelvoraPageBridge: typeof import('@zelvora/page-bridge');\n";

function scriptsOf(html: string): string {
    return [...html.matchAll(/<script>(.*?)<\/script>/gs)].map(([, script]) => script).join('\n');
}

const libraries = new Map<string, ts.SourceFile | undefined>();

function complaints(sample: Sample): string[] {
    const folder = join(installed.folder, `sample-${sample.line}`);
    mkdirSync(folder, { recursive: true });
    const isModule = sample.language === 'ts';
    const file = join(folder, isModule ? 'sample.ts' : 'sample.js');
    writeFileSync(file, sample.language === 'html' ? scriptsOf(sample.text) : sample.text);
    const globals = join(folder, 'globals.d.ts');
    writeFileSync(globals, classicGlobal);

    const options: ts.CompilerOptions = {
        strict: true,
        noImplicitAny: isModule,
        noEmit: true,
        skipLibCheck: true,
        allowJs: true,
        checkJs: true,
        target: ts.ScriptTarget.ES2022,
        module: ts.ModuleKind.ESNext,
        moduleResolution: ts.ModuleResolutionKind.Bundler,
        moduleDetection: ts.ModuleDetectionKind.Auto,
        lib: ['lib.es2022.d.ts', 'lib.dom.d.ts', 'lib.dom.iterable.d.ts'],
        typeRoots: [join(folders.page, 'node_modules/@types')],
        types: ['node'],
    };
    const host = ts.createCompilerHost(options);
    const read = host.getSourceFile;
    host.getSourceFile = (name, ...rest) => {
        if (!libraries.has(name) && name.includes('node_modules'))
            libraries.set(name, read.call(host, name, ...rest));
        return libraries.get(name) ?? read.call(host, name, ...rest);
    };
    const program = ts.createProgram([file, globals], options, host);
    return ts.getPreEmitDiagnostics(program).map(({ messageText }) => ts.flattenDiagnosticMessageText(messageText, '\n'));
}

const guides = ['page-authors.md', 'page-authors.ko.md'];
for (const guide of guides)
    for (const sample of samplesIn(guide))
        test(`the sample in line ${sample.line} of ${guide} compiles`, () => {
            assert.deepEqual(complaints(sample), []);
        });

test('a sample that is wrong does not compile', () => {
    const wrong = (language: string, text: string) => complaints({ language, line: 0, text }).length;
    assert.equal(wrong('ts', "import { getItem } from '@zelvora/page-bridge'; getItem(5);"), 1);
    assert.equal(wrong('html', '<script>ZelvoraPageBridge.getItem(5);</script>'), 1);
    assert.equal(wrong('html', '<script>window.ZelvoraSDKBridge?.getItem("key");</script>'), 1);
});

const headingsOf = (text: string) =>
    [...text.matchAll(/^#+ (.*)$/gm)].map(([, heading]) =>
        heading!.toLowerCase().replace(/[^\p{L}\p{N} -]/gu, '').replaceAll(' ', '-'),
    );

for (const guide of guides)
    test(`each link of ${guide} leads somewhere`, () => {
        const read = (file: string) => readFileSync(join(folders.project, 'docs', file), 'utf8');
        const links = [...read(guide).matchAll(/\]\(([^)#]*)#?([^)]*)\)/g)];
        assert.ok(links.length > 5);
        for (const [link, file, heading] of links) {
            const text = read(file || guide);
            assert.ok(!heading || headingsOf(text).includes(heading), link);
        }
    });

test('the guide has the same samples in both languages', () => {
    const [english, korean] = guides.map((guide) => samplesIn(guide).map(({ language }) => language));
    assert.ok(english!.length > 5);
    assert.deepEqual(korean, english);
});
