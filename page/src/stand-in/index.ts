import { type Actions, App } from './app.js';
import type { Call } from './calls.js';
import { bridgeScript, registerHandler, runScript } from './inject-script.js';
import { showPanel } from './panel.js';
import { Session } from './session.js';

export type { Actions } from './app.js';
export type { Call } from './calls.js';

export interface StandInOptions {
    /** The app's own actions, by name. They become functions of the bridge, as in the app. */
    actions?: Actions;
    /** Where the app keeps its values; `localStorage` if absent. */
    storage?: Storage;
    /** Whether there is a panel, with the app's footer; true if absent. */
    panel?: boolean;
    /** Called when the page has closed the app's screen, with the events that were uploaded then. */
    onClose?: (uploaded: object[]) => void;
    /** The time in milliseconds since 1970; the browser's if absent. */
    now?: () => number;
}

/** The app that is not there. */
export interface StandIn {
    /** The calls of the page and its frames, the latest 200, oldest first. */
    readonly calls: readonly Call[];
    readonly isFooterVisible: boolean;
    /**
     * As the app does when its screen closes: the oldest 500 events leave the queue. Returns them as the app would send
     * them, none if one of them holds what JSON lacks.
     */
    upload(): object[];
}

const installed = Symbol.for('@zelvora/page-bridge/stand-in');
const frameMessage = '@zelvora/page-bridge/stand-in';

declare global {
    interface Window {
        [installed]?: StandIn;
    }
}

/**
 * Gives the pages of an ordinary browser the app's `window.ZelvoraSDKBridge`. Call it before anything that uses the
 * bridge, also in each frame. Does nothing, and returns nothing, in the app and on a server. A call in a frame returns
 * nothing, as the app is with the main frame, and a second call what the first did.
 */
export function installStandIn(options: StandInOptions = {}): StandIn | undefined {
    if (typeof window === 'undefined')
        return undefined;
    if (window[installed] || window.ZelvoraSDKBridge)
        return window[installed];
    const session = new Session();
    const isFrame = window.top !== window;
    const standIn = isFrame ? undefined : install(options, session);
    if (isFrame)
        registerHandler(passToMainFrame);
    if (!session.has('noBridge'))
        inject(session.has('noActions') ? [] : Object.keys(options.actions ?? {}));
    return standIn;
}

function passToMainFrame(body: unknown): void {
    try {
        window.top?.postMessage({ [frameMessage]: body }, '*');
    } catch (error) {
        console.warn('[stand-in] dropped:', error);
    }
}

function install(options: StandInOptions, session: Session): StandIn {
    const app = new App(
        {
            actions: options.actions ?? {},
            storage: options.storage ?? localStorage,
            now: options.now ?? Date.now,
            onClose: options.onClose ?? (() => console.info('[stand-in] The app would close its screen now.')),
        },
        session,
    );
    registerHandler((body) => app.receive(body));
    window.addEventListener('message', (event) => {
        if (event.source !== window && typeof event.data === 'object' && event.data && frameMessage in event.data)
            app.receive(event.data[frameMessage]);
    });
    if (options.panel ?? true)
        showPanel(app);
    const standIn: StandIn = {
        calls: app.calls,
        get isFooterVisible() {
            return session.isFooterVisible;
        },
        upload: () => app.upload(),
    };
    window[installed] = standIn;
    return standIn;
}

function inject(actionNames: readonly string[]): void {
    runScript(bridgeScript(actionNames));
    if (!window.ZelvoraSDKBridge)
        console.error("[stand-in] The page's Content-Security-Policy forbids inline scripts. Allow them while you develop.");
}
