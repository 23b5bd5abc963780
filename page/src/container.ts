import { bridge } from './app.js';
import { check } from './bridge-error.js';

/** Uploads the saved events and closes the screen that shows this page. */
export function close(): void {
    bridge().close();
}

/** Shows or hides the app's footer below the page. */
export function setFooterVisible(visible: boolean): void {
    const app = bridge();
    check(typeof visible === 'boolean', 'Pass true or false, not text.');
    app.setFooterVisible(visible);
}
