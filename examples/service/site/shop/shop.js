import { readIfPossible } from './app.js';
import { isDebugging } from './debugging.js';
import { isInApp } from './page-bridge/index.js';
import { texts } from './texts.js';

const query = new URLSearchParams(location.search);

// An app's pages follow its user's language, which the engine knows, until the user chooses another here.
export const language = (query.get('lang') ?? navigator.language).startsWith('ko') ? 'ko' : 'en';

// What the app told about its user in the entry URL. Every link passes it on.
export const entry = Object.fromEntries(['adid', 'uKey', 'rid'].map((name) => [name, query.get(name) ?? '']));

export function text(name) {
    return texts[language][name];
}

export function price(amount) {
    return language === 'ko' ? `${amount.toLocaleString('ko-KR')}원` : `₩${amount.toLocaleString('en-US')}`;
}

export function address(page, more = {}, inLanguage = language) {
    return `${page}?${new URLSearchParams({ ...entry, ...more, lang: inLanguage })}`;
}

// The origin of another host of the service, on the same port.
export function sibling(host) {
    return `https://${location.host.replace(/^[^.]+\.(shop|dev)\./, `${host}.`)}`;
}

export function byId(id) {
    return document.getElementById(id);
}

export function element(tag, properties = {}, ...children) {
    const made = Object.assign(document.createElement(tag), properties);
    made.append(...children);
    return made;
}

// Beside the product's name it says nothing more, so it is given no text unless it stands alone.
export function picture(product, alt = '') {
    return element('img', { src: `pictures/${product.id}.svg`, alt, className: 'picture' });
}

// Shows a notice at the bottom of the window for as long as it takes to read it.
let noticeTimer = 0;
export function notify(message) {
    const notice = byId('notice');
    notice.textContent = message;
    notice.hidden = false;
    clearTimeout(noticeTimer);
    noticeTimer = setTimeout(() => { notice.hidden = true; }, 5000);
}

export async function showCartCount() {
    const cart = await readIfPossible('cart');
    const count = Array.isArray(cart) ? cart.reduce((sum, line) => sum + line.count, 0) : 0;
    const badge = byId('cart-count');
    badge.textContent = String(count);
    badge.hidden = count === 0;
}

function navigation(current) {
    const pages = [['shop', 'index.html'], ['cart', 'cart.html'], ['bridge', 'bridge.html'], ['links', 'links.html']];
    const made = element('nav', { id: 'navigation', ariaLabel: text('pages') });
    for (const [name, page] of pages) {
        const link = element('a', { id: `to-${name}`, href: address(page) }, text(name));
        if (name === current)
            link.setAttribute('aria-current', 'page');
        if (name === 'cart')
            link.append(element('span', { id: 'cart-count', className: 'badge', hidden: true }));
        made.append(link);
    }
    return made;
}

function languageSwitch() {
    const current = Object.fromEntries(query);
    const page = location.pathname.split('/').pop() || 'index.html';
    const made = element('div', { id: 'languages' });
    for (const [code, label] of [['ko', '한국어'], ['en', 'English']]) {
        const link = element('a', { id: `lang-${code}`, lang: code, href: address(page, current, code) }, label);
        if (code === language)
            link.setAttribute('aria-current', 'true');
        made.append(link);
    }
    return made;
}

function bottom() {
    const state = isInApp() ? 'bridgePresent' : 'bridgeMissing';
    const made = element('footer', { id: 'about', hidden: isInApp() && !isDebugging() });
    made.append(element('span', { id: 'bridge-state', className: isInApp() ? 'present' : 'missing' }, text(state)));
    for (const [name, value] of Object.entries(entry)) {
        const shown = element('span', { id: `entry-${name}` }, value || text('none'));
        made.append(element('span', { className: 'entry' }, `${text(name)} `, shown));
    }
    return made;
}

async function showShopName() {
    const shop = await (await fetch('shop.json')).json();
    byId('shop-name').textContent = shop.name[language];
    byId('shop-profile').textContent = shop.profile === 'dev' ? 'DEV' : '';
    document.title = shop.name[language];
}

// Adds the parts that all pages share and fills in the texts immediately. The promise resolves once the shop's name
// and the cart are shown as well.
export function dressPage(current) {
    document.documentElement.lang = language;
    for (const place of document.querySelectorAll('[data-text]'))
        place.textContent = text(place.dataset.text);

    const name = element('a', { id: 'shop-name', href: address('index.html') });
    const top = element('div', { className: 'top' }, name, element('span', { id: 'shop-profile' }), languageSwitch());
    document.body.prepend(element('header', {}, top, navigation(current)));
    document.body.append(bottom(), element('div', { id: 'notice', role: 'status', hidden: true }));
    return Promise.all([showShopName(), showCartCount()]);
}

// Marks the page as complete for programs that drive it from outside.
export async function finishPage() {
    await Promise.allSettled([...document.images].map((image) => image.decode()));
    document.body.dataset.state = 'ready';
}
