import { readdirSync, watch } from 'node:fs';
import { join } from 'node:path';

const quietMilliseconds = 50;

/** @param {string} name */
function isOfInterest(name) {
    return name !== 'node_modules' && !name.startsWith('.');
}

/**
 * Calls the listener once some files in the folder, or below, have changed: editors write more than one. Returns what
 * ends it. Every folder has a watcher of its own, because Node.js 18 cannot watch a whole tree on Linux.
 * @param {string} folder
 * @param {() => void} didChange
 */
export function watchFolder(folder, didChange) {
    /** @type {Map<string, import('node:fs').FSWatcher>} */
    const watchers = new Map();
    /** @type {NodeJS.Timeout | undefined} */
    let pending;

    function soon() {
        clearTimeout(pending);
        pending = setTimeout(didChange, quietMilliseconds);
    }

    /** @param {string} path */
    function add(path) {
        if (!watchers.has(path)) {
            const watcher = watch(path, () => {
                add(path);
                soon();
            });
            // Its folder is gone.
            watcher.on('error', () => watchers.delete(path) && watcher.close());
            watchers.set(path, watcher);
        }
        for (const entry of readdirSync(path, { withFileTypes: true })) {
            if (entry.isDirectory() && isOfInterest(entry.name) && !watchers.has(join(path, entry.name)))
                add(join(path, entry.name));
        }
    }

    add(folder);
    return () => {
        clearTimeout(pending);
        watchers.forEach((watcher) => watcher.close());
    };
}
