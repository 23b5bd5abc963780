import { entry } from './shop.js';

// The object that the app injected; undefined in an ordinary browser.
export function bridge() {
    return window.ZelvoraSDKBridge;
}

// The app answers a read by calling the global function that the request named. Answers come in the order of the requests.
const waiting = [];
window.onItemRead = (value) => waiting.shift()?.(value);

// Without an app, values last as long as the tab.
export function readItem(key) {
    if (!bridge())
        return Promise.resolve(JSON.parse(sessionStorage.getItem(key)));
    return new Promise((resolve) => {
        waiting.push(resolve);
        bridge().getItem(key, 'onItemRead');
    });
}

export function writeItem(key, value, expirySeconds) {
    if (bridge())
        bridge().setItem(key, value, expirySeconds);
    else
        sessionStorage.setItem(key, JSON.stringify(value));
}

export function removeItem(key) {
    if (bridge())
        bridge().removeItem(key);
    else
        sessionStorage.removeItem(key);
}

// If the entry URL has no advertising id, the app fills it in.
export function saveEvent(eventId, members) {
    bridge()?.saveEvent({
        eventId,
        adid: entry.adid || null,
        at: new Date().toISOString(),
        page: location.pathname.split('/').pop() || 'index.html',
        referrer: document.referrer.split('?')[0] || null,
        ...members,
    });
}
