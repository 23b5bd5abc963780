import { enterApp } from './app.js';
import { emptyCart, readCart, removeFromCart, savePurchase } from './cart-store.js';
import { productWithId } from './products.js';
import {
    address, byId, dressPage, element, finishPage, language, notify, picture, price, showCartCount, text,
} from './shop.js';

async function remove(productId) {
    await removeFromCart(productId);
    await Promise.all([show(), showCartCount()]);
}

function row(line) {
    const product = productWithId(line.productId);
    const words = element('div', {}, element('b', {}, product.name[language]), element('br'));
    words.append(`${price(product.price)} × `, element('span', { id: `count-${product.id}` }, String(line.count)));
    const button = element('button', { id: `remove-${product.id}` }, text('remove'));
    button.ariaLabel = `${text('remove')}: ${product.name[language]}`;
    button.addEventListener('click', () => remove(product.id));
    return element('div', { id: `line-${product.id}`, className: 'cart-line' }, picture(product), words, button);
}

async function show() {
    const lines = await readCart();
    const total = lines.reduce((sum, line) => sum + productWithId(line.productId).price * line.count, 0);
    byId('cart-lines').replaceChildren(...lines.map(row));
    byId('cart-total').textContent = price(total);
    byId('cart-bill').hidden = lines.length === 0;
    byId('cart-empty').hidden = lines.length > 0;
}

async function checkOut() {
    savePurchase(await readCart());
    await emptyCart();
    await Promise.all([show(), showCartCount()]);
    byId('order-done').hidden = false;
}

async function openPage() {
    byId('cart-empty-shop').href = address('index.html');
    byId('checkout').addEventListener('click', checkOut);
    await enterApp();
    await dressPage('cart');
    await show().catch(() => notify(text('cartUnreadable')));
    finishPage();
}

openPage();
