import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import { folders } from '../tools/folders.mjs';

test('the package has the version of the SDK', () => {
    const build = readFileSync(join(folders.project, 'CMakeLists.txt'), 'utf8');
    const manifest = JSON.parse(readFileSync(join(folders.package, 'package.json'), 'utf8'));
    assert.equal(manifest.version, /project\(ZelvoraIOS VERSION ([\d.]+)/.exec(build)?.[1]);
});
