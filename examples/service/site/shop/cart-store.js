import { report } from './app.js';
import { getItem, removeItem, setItem } from './page-bridge/index.js';
import { productWithId } from './products.js';

const sevenDays = 7 * 24 * 60 * 60;

// The lines of the cart whose products still exist.
export async function readCart() {
    const kept = await getItem('cart');
    return Array.isArray(kept) ? kept.filter((line) => productWithId(line.productId)) : [];
}

// A change reads, awaits the answer and writes. Changes run one after another, so that none is lost. One without an answer
// fails: to write what it knows would empty the cart.
let lastChange = Promise.resolve();

function changeCart(edit) {
    const change = lastChange.then(async () => {
        const lines = edit(await readCart());
        if (lines.length > 0)
            setItem('cart', lines, sevenDays);
        else
            removeItem('cart');
    });
    lastChange = change.catch(() => {});
    return change;
}

export function addToCart(product) {
    report('cart_add', { productId: product.id, price: product.price, count: 1 });
    return changeCart((lines) => {
        const line = lines.find((candidate) => candidate.productId === product.id);
        if (!line)
            return [...lines, { productId: product.id, count: 1 }];
        line.count += 1;
        return lines;
    });
}

export function removeFromCart(productId) {
    return changeCart((lines) => lines.filter((line) => line.productId !== productId));
}

export function emptyCart() {
    return changeCart(() => []);
}

export function savePurchase(lines) {
    const items = lines.map((line) => ({ ...line, price: productWithId(line.productId).price }));
    const amount = items.reduce((sum, item) => sum + item.price * item.count, 0);
    report('purchase', { items, amount, currency: 'KRW', coupon: null, gift: false });
}
