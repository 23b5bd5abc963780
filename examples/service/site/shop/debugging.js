const key = 'debugging';

// Whether pages show what the app told about its user. The choice stays with the browser.
export function isDebugging() {
    return localStorage.getItem(key) === 'on';
}

export function listenToDebuggingSwitch() {
    const control = document.getElementById('debugging');
    control.checked = isDebugging();
    control.addEventListener('change', () => {
        localStorage.setItem(key, control.checked ? 'on' : 'off');
        document.getElementById('about').hidden = !control.checked;
    });
}
