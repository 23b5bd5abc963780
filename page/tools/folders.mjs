import { existsSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

// From the tools as from the built tests, which have a copy of this file in them.
function findProject() {
    let folder = dirname(fileURLToPath(import.meta.url));
    while (!existsSync(join(folder, 'page/package.json')))
        folder = dirname(folder);
    return folder;
}

const project = findProject();

export const folders = {
    project,
    page: join(project, 'page'),
    build: join(project, 'build/page'),
    // What `npm pack` packs.
    package: join(project, 'build/page/package'),
    tests: join(project, 'build/page/tests'),
};
