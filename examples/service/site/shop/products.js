export const products = [
    {
        id: 'moon-jar',
        price: 89000,
        name: { ko: '달항아리', en: 'Moon jar' },
        story: {
            ko: '물레에서 두 번 나누어 빚은 백자입니다. 좌우가 조금 다른 둥근 선을 그대로 살렸습니다.',
            en: 'White porcelain thrown in two halves. Its two sides are not quite alike, and that is its charm.',
        },
    },
    {
        id: 'patchwork-bag',
        price: 54000,
        name: { ko: '조각보 가방', en: 'Patchwork bag' },
        story: {
            ko: '남은 모시 조각을 이어 만든 가벼운 장바구니입니다. 접으면 손바닥만 해집니다.',
            en: 'A light bag sewn from leftover ramie. Folded, it is no larger than your hand.',
        },
    },
    {
        id: 'brass-spoons',
        price: 38000,
        name: { ko: '유기 수저 한 벌', en: 'Brass spoon set' },
        story: {
            ko: '두드려 만든 놋수저와 젓가락 한 벌입니다. 쓸수록 은은한 빛이 돕니다.',
            en: 'A hammered brass spoon with chopsticks. The more it is used, the softer its shine.',
        },
    },
    {
        id: 'hanji-lamp',
        price: 67000,
        name: { ko: '한지 조명', en: 'Hanji lamp' },
        story: {
            ko: '닥종이 두 겹을 발라 빛이 부드럽게 번집니다. 잠들기 전 책 읽기에 알맞습니다.',
            en: 'Two layers of mulberry paper spread the light softly, just right for a last page before sleep.',
        },
    },
    {
        id: 'mugwort-tea',
        price: 18000,
        name: { ko: '섬 쑥차', en: 'Island mugwort tea' },
        story: {
            ko: '봄에 딴 어린 쑥을 가마솥에 아홉 번 덖었습니다. 향이 깊고 끝맛이 맑습니다.',
            en: 'Young spring mugwort, roasted nine times. Deep in scent, clear in the end.',
        },
    },
    {
        id: 'soban-table',
        price: 120000,
        name: { ko: '호족 소반', en: 'Soban table' },
        story: {
            ko: '한 사람을 위한 작은 상입니다. 은행나무에 옻칠을 세 번 올렸습니다.',
            en: 'A small table for one, of ginkgo wood under three coats of lacquer.',
        },
    },
];

export function productWithId(id) {
    return products.find((product) => product.id === id);
}
