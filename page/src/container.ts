import { bridge } from './app.js';
import { check } from './bridge-error.js';

/**
 * Uploads at most the oldest 500 events and dismisses the screen that shows this page, unless the app has pushed it on a
 * navigation stack.
 */
export function close(): void {
    bridge().close();
}

/** Shows or hides the app's footer below the page. */
export function setFooterVisible(visible: boolean): void {
    const app = bridge();
    check(typeof visible === 'boolean', 'Pass true or false, not text.');
    app.setFooterVisible(visible);
}
