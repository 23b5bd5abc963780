const bridge = window.ZelvoraSDKBridge;
const on = (id, work) => document.getElementById(id).addEventListener('click', work);
const names = [];

document.getElementById('form').addEventListener('submit', (event) => {
    event.preventDefault();
    const name = document.getElementById('name').value;
    names.push({ id: name, count: 1 });
    bridge.setItem('cart', names, 7 * 24 * 3600);
    bridge.saveEvent({ eventId: 'cart_add', productId: name, coupon: null });
    const line = document.createElement('li');
    line.textContent = name;
    document.getElementById('cart').append(line);
});
window.onCart = (cart) => { document.getElementById('answer').textContent = JSON.stringify(cart); };
on('read', () => bridge.getItem('cart', 'onCart'));
on('wrong', () => {
    bridge.saveEvent('{"eventId":"text"}');
    bridge.setFooterVisible('false');
    bridge.setItem('brief', 1, '60');
});
on('share', () => bridge.share({ id: 'moon-jar' }));
on('footer', () => bridge.setFooterVisible(false));
on('close', () => bridge.close());
document.getElementById('language').textContent = navigator.language;
