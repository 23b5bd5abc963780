import { enterApp, readIfPossible } from './app.js';
import { productWithId, products } from './products.js';
import { address, byId, dressPage, element, finishPage, language, picture, price, text } from './shop.js';

function card(product) {
    const words = element('div', {}, element('b', {}, product.name[language]));
    words.append(element('span', { className: 'price' }, price(product.price)));
    const link = { id: `product-${product.id}`, className: 'product', href: address('product.html', { id: product.id }) };
    return element('a', link, picture(product), words);
}

function showRecent(product) {
    const words = element('div', {}, element('span', { className: 'soft' }, text('recent')));
    words.append(element('b', {}, product.name[language]));
    byId('recent').href = address('product.html', { id: product.id });
    byId('recent').append(picture(product), words);
    byId('recent').hidden = false;
}

// Not at the top level of the module, where an await may leave the engine spinning once the page has gone.
async function openPage() {
    byId('products').append(...products.map(card));
    await enterApp();
    await dressPage('shop');
    const recent = productWithId(await readIfPossible('recentProduct'));
    if (recent)
        showRecent(recent);
    finishPage();
}

openPage();
