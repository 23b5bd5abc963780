import { getItem, isInApp, saveEvent } from './page-bridge/index.js';
import { entry } from './shop.js';

// An ordinary browser gets an app that plays along. In an app nothing of it is loaded.
export async function enterApp() {
    if (isInApp())
        return;
    const { installStandIn } = await import('./page-bridge/stand-in/index.js');
    installStandIn({ actions: { showMessage: (data) => alert(data) } });
}

// For what a page can also be shown without.
export async function readIfPossible(key) {
    try {
        return await getItem(key);
    } catch (error) {
        console.warn(`${key}: ${error.message}`);
        return null;
    }
}

// If the entry URL has no advertising id, the app fills it in.
export function report(eventId, members) {
    if (!isInApp())
        return;
    saveEvent({
        eventId,
        adid: entry.adid || null,
        at: new Date().toISOString(),
        page: location.pathname.split('/').pop() || 'index.html',
        referrer: document.referrer.split('?')[0] || null,
        ...members,
    });
}
