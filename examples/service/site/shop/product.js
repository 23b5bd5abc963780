import { enterApp, report } from './app.js';
import { addToCart, savePurchase } from './cart-store.js';
import { isInApp, setItem } from './page-bridge/index.js';
import { productWithId } from './products.js';
import { address, byId, dressPage, finishPage, language, notify, picture, price, showCartCount, text } from './shop.js';

const oneDay = 24 * 60 * 60;

function show(product) {
    byId('product-picture').append(picture(product, product.name[language]));
    byId('product-name').textContent = product.name[language];
    byId('product-price').textContent = price(product.price);
    byId('product-story').textContent = product.story[language];
    byId('product').hidden = false;
}

function listen(product) {
    byId('add-to-cart').addEventListener('click', async () => {
        try {
            await addToCart(product);
            await showCartCount();
            notify(text('added'));
        } catch {
            notify(text('cartUnreadable'));
        }
    });
    byId('buy-now').addEventListener('click', () => {
        savePurchase([{ productId: product.id, count: 1 }]);
        notify(text('orderDone'));
    });
}

async function openPage() {
    const product = productWithId(new URLSearchParams(location.search).get('id'));
    await enterApp();
    const dressed = dressPage('shop');
    if (product) {
        show(product);
        listen(product);
        if (isInApp())
            setItem('recentProduct', product.id, oneDay);
        report('product_view', { productId: product.id, price: product.price });
    } else {
        byId('no-product-shop').href = address('index.html');
        byId('no-product').hidden = false;
    }
    await dressed;
    finishPage();
}

openPage();
