import { enterApp } from './app.js';
import { listenToDebuggingSwitch } from './debugging.js';
import { isInApp, shareWithFrames } from './page-bridge/index.js';
import { byId, dressPage, element, finishPage, language, sibling, text } from './shop.js';

const builtIn = ['close', 'setItem', 'getItem', 'removeItem', 'saveEvent', 'getEvents', 'setFooterVisible'];

function log(line, className = '') {
    byId('log').append(element('li', { className }, line));
    byId('log').scrollTop = byId('log').scrollHeight;
}

function spoken(value) {
    return value === undefined ? 'undefined' : JSON.stringify(value);
}

// Calls the app's own function, as a page may also be written that passes what the package refuses.
function call(name, ...values) {
    const bridge = window.ZelvoraSDKBridge;
    if (!bridge) {
        log(`× ${name}: ${text('bridgeMissing')}`, 'problem');
        return;
    }
    if (typeof bridge[name] !== 'function') {
        log(`× ${name}: undefined`, 'problem');
        return;
    }
    log(`→ ${name}(${values.map(spoken).join(', ')})`);
    bridge[name](...values);
}

function logAnswers(...names) {
    for (const name of names)
        window[name] = (value) => log(`← ${name}(${spoken(value)})`, 'answer');
}

function itemValue() {
    const written = byId('item-value').value;
    const values = {
        text: written,
        number: Number(written),
        true: true,
        false: false,
        list: [written, 1, true],
        object: { text: written, number: 1, yes: true },
        null: null,
        nothing: undefined,
    };
    return values[byId('item-kind').value];
}

function setItem() {
    const expiry = byId('item-expiry').value.trim();
    call('setItem', byId('item-key').value, itemValue(), expiry === '' ? undefined : Number(expiry));
}

function saveEvent() {
    try {
        call('saveEvent', JSON.parse(byId('event-json').value));
    } catch (error) {
        log(`× ${error.message}`, 'problem');
    }
}

function onClick(id, work) {
    byId(id).addEventListener('click', work);
}

function listenToButtons() {
    onClick('btn-close', () => call('close'));
    onClick('btn-footer-show', () => call('setFooterVisible', true));
    onClick('btn-footer-hide', () => call('setFooterVisible', false));
    onClick('btn-footer-text', () => call('setFooterVisible', 'false'));
    onClick('btn-set-item', setItem);
    onClick('btn-get-item', () => call('getItem', byId('item-key').value, byId('item-callback').value));
    onClick('btn-remove-item', () => call('removeItem', byId('item-key').value));
    onClick('btn-save-event', saveEvent);
    onClick('btn-save-event-text', () => call('saveEvent', byId('event-json').value));
    onClick('btn-get-events', () => call('getEvents', 'onBridgeEvents'));
    onClick('log-clear', () => byId('log').replaceChildren());
}

function listenToCustomButtons() {
    const values = { object: { from: '상점', count: 2 }, text: '안녕', number: 7, true: true, null: null };
    for (const [kind, value] of Object.entries(values))
        onClick(`btn-custom-${kind}`, () => call(byId('custom-name').value, value));
    onClick('btn-custom-nothing', () => call(byId('custom-name').value));

    const names = Object.keys(window.ZelvoraSDKBridge ?? {}).filter((name) => !builtIn.includes(name));
    byId('custom-names').append(...names.map((name) => element('span', { role: 'listitem' }, name)));
    byId('custom-names').hidden = names.length === 0;
    byId('custom-name').value = names[0] ?? 'showMessage';
}

// A page cannot call into a frame of another origin, so it asks the frame to call the bridge.
function showFrame() {
    const origin = sibling('frames');
    const ask = (action) => () => byId('frame').contentWindow.postMessage({ ask: action }, origin);
    onClick('btn-frame-save-event', ask('saveEvent'));
    onClick('btn-frame-set-item', ask('setItem'));
    onClick('btn-frame-get-item', ask('getItem'));
    onClick('btn-frame-shared-item', ask('getSharedItem'));
    if (isInApp())
        shareWithFrames({ origins: [origin] });
    window.addEventListener('message', (message) => {
        if (message.origin === origin && typeof message.data?.told === 'string')
            log(`▣ ${message.data.told}`);
    });

    const loaded = new Promise((resolve) => byId('frame').addEventListener('load', resolve, { once: true }));
    byId('frame').src = `${origin}/frame.html?lang=${language}`;
    return loaded;
}

async function openPage() {
    await enterApp();
    logAnswers('onBridgeItem', 'onBridgeEvents', 'onFrameItem');
    listenToButtons();
    listenToCustomButtons();
    const dressed = dressPage('bridge');
    listenToDebuggingSwitch();
    await Promise.all([dressed, showFrame()]);
    if (!isInApp())
        log(`× ${text('bridgeMissing')}`, 'problem');
    finishPage();
}

openPage();
