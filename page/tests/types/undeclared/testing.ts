import { fakeBridge } from '@zelvora/page-bridge/testing';

const fake = fakeBridge({
    items: { cart: [1] },
    actions: { share: (data) => data?.length },
    answers: 'by hand',
});
const answered: boolean = fake.answer();
const [name, ...values] = fake.calls[0] ?? [];
fake.restore();
void [answered, name, values];
// @ts-expect-error: they come soon, or by hand
fakeBridge({ answers: 'later' });
