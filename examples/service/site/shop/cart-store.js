import { readItem, removeItem, saveEvent, writeItem } from './bridge.js';
import { productWithId } from './products.js';

const sevenDays = 7 * 24 * 60 * 60;

// The lines of the cart whose products still exist.
export async function readCart() {
    const kept = await readItem('cart');
    return Array.isArray(kept) ? kept.filter((line) => productWithId(line.productId)) : [];
}

// A change reads, awaits the answer and writes. Changes run one after another, so that none is lost.
let lastChange = Promise.resolve();

function change(edit) {
    lastChange = lastChange.then(async () => {
        const lines = edit(await readCart());
        if (lines.length > 0)
            writeItem('cart', lines, sevenDays);
        else
            removeItem('cart');
    });
    return lastChange;
}

export function addToCart(product) {
    saveEvent('cart_add', { productId: product.id, price: product.price, count: 1 });
    return change((lines) => {
        const line = lines.find((candidate) => candidate.productId === product.id);
        if (!line)
            return [...lines, { productId: product.id, count: 1 }];
        line.count += 1;
        return lines;
    });
}

export function removeFromCart(productId) {
    return change((lines) => lines.filter((line) => line.productId !== productId));
}

export function emptyCart() {
    return change(() => []);
}

export function savePurchase(lines) {
    const items = lines.map((line) => ({ ...line, price: productWithId(line.productId).price }));
    const amount = items.reduce((sum, item) => sum + item.price * item.count, 0);
    saveEvent('purchase', { items, amount, currency: 'KRW', coupon: null, gift: false });
}
