// Runs the built tests. Arguments name some of them, without ".test.ts".
import { spawnSync } from 'node:child_process';
import { readdirSync } from 'node:fs';
import { join } from 'node:path';
import { folders } from './folders.mjs';

const wanted = process.argv.slice(2);
const files = readdirSync(folders.tests)
    .filter((file) => file.endsWith('.test.mjs'))
    .filter((file) => wanted.length === 0 || wanted.includes(file.replace('.test.mjs', '')))
    .map((file) => join(folders.tests, file));
if (files.length === 0) {
    console.error('There is no such test.');
    process.exit(1);
}
const options = ['--enable-source-maps', '--test', '--test-reporter=tap'];
process.exit(spawnSync(process.execPath, [...options, ...files], { stdio: 'inherit' }).status ?? 1);
