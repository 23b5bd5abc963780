import { getItem, isInApp } from './page-bridge/index.js';

const english = new URLSearchParams(location.search).get('lang') === 'en';
const shopOrigin = /^https:\/\/[^./]+\.(shop|dev)\.zelvora\.localhost:\d+$/;

function byId(id) {
    return document.getElementById(id);
}

function tell(line) {
    const item = document.createElement('li');
    item.textContent = line;
    byId('frame-log').prepend(item);
    // The shop may be on any port, and the line is not secret.
    parent.postMessage({ told: line }, '*');
}

const actions = {
    saveEvent: (bridge) => bridge.saveEvent({ eventId: 'frame_event', origin: location.origin }),
    setItem: (bridge) => bridge.setItem('fromFrame', english ? 'hello from the frame' : '프레임에서 안녕', 3600),
    getItem: (bridge) => bridge.getItem('fromFrame', 'onFrameItem'),
    // The page around this frame shares the answer.
    getSharedItem: () => getItem('fromFrame').then(
        (value) => tell(`frame ← ${JSON.stringify(value)}`),
        (error) => tell(`× ${error.message}`),
    ),
};

function act(name) {
    if (!window.ZelvoraSDKBridge) {
        tell(`× frame ${name}: bridge missing`);
        return;
    }
    actions[name](window.ZelvoraSDKBridge);
    tell(`frame ${name}`);
}

// Answers go to the page around this frame, so this should never be called.
window.onFrameItem = (value) => tell(`frame onFrameItem(${JSON.stringify(value)})`);

window.addEventListener('message', (message) => {
    if (shopOrigin.test(message.origin) && Object.hasOwn(actions, message.data?.ask))
        act(message.data.ask);
});

// An ordinary browser gets an app that plays along.
async function enterApp() {
    if (!isInApp())
        (await import('./page-bridge/stand-in/index.js')).installStandIn();
    byId('bridge-state').textContent = isInApp() ? '' : english ? 'bridge missing' : '브리지 없음';
}

enterApp();
byId('origin').textContent = location.hostname;
byId('frame-save-event').addEventListener('click', () => act('saveEvent'));
byId('frame-set-item').addEventListener('click', () => act('setItem'));
byId('frame-get-item').addEventListener('click', () => act('getItem'));
