import { execFileSync } from 'node:child_process';
import { cpSync, mkdirSync, mkdtempSync, readdirSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { folders } from '../tools/folders.mjs';

/** A project of a page author, into which the packed package is installed. */
export class InstalledPackage {
    readonly folder = mkdtempSync(join(tmpdir(), 'zelvora-page-'));
    readonly files: string[];

    constructor() {
        const packed = readdirSync(folders.build).find((file) => file.endsWith('.tgz'));
        const tarball = join(folders.build, packed!);
        this.files = execFileSync('tar', ['-tf', tarball], { encoding: 'utf8' }).trim().split('\n').sort();
        writeFileSync(join(this.folder, 'package.json'), JSON.stringify({ name: 'page', private: true, type: 'module' }));
        execFileSync('npm', ['install', '--offline', '--no-audit', '--no-fund', tarball], { cwd: this.folder, stdio: 'pipe' });
    }

    /** Compiles a folder of sources as a project of its own. Returns what the compiler complains about. */
    compile(sources: string, options: object): string {
        const name = `${Math.random()}`;
        const project = join(this.folder, name);
        mkdirSync(project);
        cpSync(sources, join(project, 'src'), { recursive: true });
        const compilerOptions = {
            strict: true,
            noEmit: true,
            skipDefaultLibCheck: true,
            target: 'ES2022',
            lib: ['ES2022', 'DOM'],
            types: [],
            ...options,
        };
        writeFileSync(join(project, 'tsconfig.json'), JSON.stringify({ compilerOptions, include: ['src'] }));
        const compiler = join(folders.page, 'node_modules/typescript/bin/tsc');
        try {
            return execFileSync(process.execPath, [compiler, '-p', project], { encoding: 'utf8' });
        } catch (error) {
            return (error as { stdout: string }).stdout;
        }
    }

    /** What a program prints that runs on a server. */
    run(program: string): string {
        const options = ['--input-type=module', '-e', program];
        return execFileSync(process.execPath, options, { cwd: this.folder, encoding: 'utf8' }).trim();
    }

    remove(): void {
        rmSync(this.folder, { recursive: true });
    }
}
