import type { App } from './app.js';
import { template } from './panel-template.js';
import type { Fault } from './session.js';

const second = 1000;

function makeLine(text: string, note: string): HTMLElement {
    const line = document.createElement('li');
    const small = document.createElement('small');
    small.textContent = note;
    line.append(text, small);
    return line;
}

function linesOf({ preferences, queue, calls }: App): HTMLElement[][] {
    return [
        preferences.items().map(({ key, value, secondsLeft }) => {
            const left = secondsLeft === undefined ? '' : `${Math.ceil(secondsLeft)} s left`;
            return makeLine(`${key} = ${JSON.stringify(value)}`, left);
        }),
        queue.events().map((event) => makeLine(JSON.stringify(event), '')),
        calls.map(({ message, outcome, isProblem }) => makeLine(message, (isProblem ? '⚠ ' : '') + outcome)).reverse(),
    ];
}

/** Shows the app's footer, and a small button that opens what the app knows. The page's styles do not reach it. */
export function showPanel(app: App): void {
    const host = document.createElement('zelvora-stand-in');
    const root = host.attachShadow({ mode: 'open' });
    root.innerHTML = template;
    const panel = root.querySelector('details')!;
    const button = root.querySelector('summary')!;
    const lists = root.querySelectorAll('ul');

    function update(): void {
        const warnings = app.calls.filter((call) => call.isProblem).length;
        button.textContent = warnings ? `App, warnings: ${warnings}` : 'App';
        host.classList.toggle('hidden', !app.session.isFooterVisible);
        if (panel.open)
            linesOf(app).forEach((lines, index) => lists[index]!.replaceChildren(...lines));
    }

    for (const input of root.querySelectorAll('input')) {
        const fault = input.name as Fault;
        input.checked = app.session.has(fault);
        input.onchange = () => {
            app.session.setFault(fault, input.checked);
            // The bridge and its functions are made when a page begins.
            if (fault !== 'noAnswer')
                location.reload();
        };
    }
    root.querySelector('button')!.onclick = () => app.upload();
    panel.ontoggle = update;
    panel.onkeydown = ({ key }) => {
        if (key !== 'Escape')
            return;
        panel.open = false;
        button.focus();
    };
    // A page may make a thousand calls in a row, and an expiry comes near without any.
    let pending: ReturnType<typeof setTimeout> | undefined;
    app.didChange = () => {
        clearTimeout(pending);
        pending = setTimeout(update);
    };
    setInterval(update, second);
    // Behind the page's contents, so that their end is not behind the footer. The body may not be there yet.
    const place = () => document.documentElement.append(host);
    place();
    document.addEventListener('DOMContentLoaded', place);
    update();
}
