import { pieces } from 'zelvora-bridge-script';

const handlerName = 'zelvora';
// Every other insertion is the handler's name.
const insertionOfNames = 7;

/** What the app injects into every page and frame. */
export function bridgeScript(actionNames: readonly string[]): string {
    const insertion = (index: number) => (index === insertionOfNames ? JSON.stringify(actionNames) : handlerName);
    return pieces.map((piece, index) => (index + 1 < pieces.length ? piece + insertion(index) : piece)).join('');
}

/** As the engine of the app has it: what a page posts goes to the handler that the app registered. */
export function registerHandler(postMessage: (body: unknown) => void): void {
    const holder = window as { webkit?: { messageHandlers?: Record<string, unknown> } };
    holder.webkit ??= {};
    holder.webkit.messageHandlers ??= {};
    holder.webkit.messageHandlers[handlerName] = { postMessage };
}

/**
 * Runs the script as a script of the page, so that its top-level names are the page's. A page may forbid such scripts,
 * unless they have the nonce that its own have; the app's would run all the same.
 */
export function runScript(text: string): void {
    const script = document.createElement('script');
    script.nonce = document.querySelector<HTMLScriptElement>('script[nonce]')?.nonce ?? '';
    script.textContent = text;
    document.documentElement.append(script);
    script.remove();
}
