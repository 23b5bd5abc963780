import { mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import puppeteer from 'puppeteer-core';

/** Debian's Chromium, without a window and with a profile of its own. */
export async function startChromium() {
    const profile = mkdtempSync(join(tmpdir(), 'page-chromium-'));
    const browser = await puppeteer.launch({
        executablePath: '/usr/bin/chromium',
        userDataDir: profile,
        args: [
            '--headless',
            '--no-sandbox',
            '--disable-gpu',
            '--disable-quic',
            '--no-first-run',
            '--disable-background-networking',
            '--disable-component-update',
            '--disable-sync',
        ],
    });
    return {
        browser,
        /** @param {string} address @returns {Promise<import('../conformance/run-in-browser.mjs').Page>} */
        async open(address) {
            const page = await browser.newPage();
            await page.goto(address);
            return {
                waitFor: async (expression) =>
                    (await page.waitForFunction(expression, { timeout: 120_000, polling: 50 })).jsonValue(),
                evaluate: (expression) => page.evaluate(expression),
                close: () => page.close(),
            };
        },
        async stop() {
            await browser.close();
            rmSync(profile, { recursive: true, force: true });
        },
    };
}
