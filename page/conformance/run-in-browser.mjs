import { startServer } from '../serve/server.mjs';

/**
 * @typedef {object} Page
 * @property {(expression: string) => Promise<any>} waitFor The value of the expression, once it is there.
 * @property {(expression: string) => Promise<any>} evaluate
 * @property {() => Promise<void>} close
 *
 * @typedef {object} Browser
 * @property {(address: string) => Promise<Page>} open
 */

/**
 * Runs the suite's page with the stand-in.
 * @param {Browser} browser
 * @param {{ site: string, standIn: string }} built
 * @param {number} [patience] How long a case may take, in milliseconds.
 * @returns {Promise<import('./report.mjs').Report>}
 */
export async function runInBrowser(browser, { site, standIn }, patience = 10_000) {
    const server = await startServer({ folder: site, standIn });
    const address = `http://shop.localhost:${server.port}/`;
    const otherOrigin = `http://frames.localhost:${server.port}`;

    /** @param {string} world @param {Page} page */
    async function run(world, page) {
        await page.waitFor('window.conformance && document.readyState === "complete"');
        await page.evaluate(`void conformance.run('${world}', '${otherOrigin}', ${patience})`);
        return page.waitFor('conformance.outcomes');
    }

    try {
        const bare = await browser.open(address);
        const report = { bare: await run('bare', bare), actions: [], close: {} };
        await bare.evaluate('conformance.close()');
        report.close = await bare.waitFor('window.afterClose');
        await bare.close();
        const actions = await browser.open(`${address}?actions`);
        report.actions = await run('actions', actions);
        await actions.close();
        return report;
    } finally {
        await server.close();
    }
}
