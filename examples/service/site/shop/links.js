import { enterApp } from './app.js';
import { address, byId, dressPage, element, finishPage, text } from './shop.js';

const here = `${location.host}${location.pathname.replace(/[^/]*$/, '')}`;

const links = [
    ['link-https', 'linkHttps', `https://${here}${address('index.html')}`, 'https:'],
    ['link-https-upper', 'linkHttpsUpper', `HTTPS://${here}${address('index.html')}`, 'HTTPS:'],
    ['link-http', 'linkHttp', `http://${here}${address('index.html')}`, 'http:'],
    ['link-about-blank', 'linkBlank', 'about:blank', 'about:blank'],
    ['link-tel', 'linkTel', 'tel:+82212345678', 'tel:+82212345678'],
    ['link-mailto', 'linkMailto', 'mailto:shop@zelvora.localhost?subject=%EC%95%88%EB%85%95', 'mailto:'],
    ['link-custom', 'linkCustom', 'zelvora-demo://open?from=shop', 'zelvora-demo:'],
    ['link-unknown', 'linkUnknown', 'nobody-knows-this://nowhere', 'nobody-knows-this:'],
];

function row([id, name, href, shown]) {
    return element('a', { id, href, className: 'link' }, text(name), element('code', {}, shown));
}

function addFrame(id, src) {
    document.getElementById(id)?.remove();
    byId('frame-area').after(element('iframe', { id, src, title: src.split(':')[0] }));
}

byId('links').append(...links.map(row));
byId('btn-data-frame').addEventListener('click', () => {
    addFrame('data-frame', `data:text/html;charset=utf-8,${encodeURIComponent('<p>data: 안녕하세요</p>')}`);
});
byId('btn-custom-frame').addEventListener('click', () => addFrame('custom-frame', 'zelvora-demo://frame'));
enterApp().then(() => dressPage('links')).then(finishPage);
