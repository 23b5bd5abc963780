/**
 * What one side came to: the outcomes of the cases in an app without actions and with some, and what became of the
 * screen that the page closed.
 * @typedef {import('./page.ts').Outcome} Outcome
 * @typedef {{ bare: Outcome[], actions: Outcome[], close: unknown }} Report
 *
 * @typedef {object} Row
 * @property {string} name
 * @property {unknown} expected
 * @property {Record<string, unknown>} answers By side.
 * @property {boolean} isEqual All answers are the expected one.
 */

/** Members have no order. @param {unknown} value @returns {string} */
function canonical(value) {
    return JSON.stringify(value ?? null, (_name, member) =>
        typeof member === 'object' && member !== null && !Array.isArray(member)
            ? Object.fromEntries(Object.entries(member).sort(([a], [b]) => (a < b ? -1 : 1)))
            : member,
    );
}

const closing = 'close uploads the events and closes the screen';
const closed = { closed: true, uploaded: { adid: 'unknown', eventId: 'last', note: '' } };

/** @param {Report} report @returns {Outcome[]} */
function outcomesOf({ bare, actions, close }) {
    return [...bare, ...actions, { name: closing, expected: closed, answer: close }];
}

/**
 * One row for each case that any side ran. A side that did not run it has no answer there.
 * @param {Record<string, Report>} reports By side.
 * @returns {Row[]}
 */
export function compare(reports) {
    /** @type {Map<string, Row>} */
    const rows = new Map();
    for (const [side, report] of Object.entries(reports)) {
        for (const { name, expected, answer } of outcomesOf(report)) {
            const row = rows.get(name) ?? { name, expected, answers: {}, isEqual: false };
            row.answers[side] = answer;
            rows.set(name, row);
        }
    }
    for (const row of rows.values()) {
        row.isEqual = Object.keys(reports).every(
            (side) => side in row.answers && canonical(row.answers[side]) === canonical(row.expected),
        );
    }
    return [...rows.values()];
}

/** For people: equal answers once, others side by side. @param {Row[]} rows */
export function describe(rows) {
    const failed = rows.filter((row) => !row.isEqual).length;
    const lines = rows.map(({ name, answers, isEqual }) =>
        isEqual
            ? `equal    ${name}\n             ${Object.keys(answers).join(', ')}: ${canonical(Object.values(answers)[0])}`
            : [
                  `FAILURE  ${name}`,
                  ...Object.entries(answers).map(([side, answer]) => `             ${side}: ${canonical(answer)}`),
              ].join('\n'),
    );
    return `${rows.length} cases, ${failed} failed\n\n${lines.join('\n')}\n`;
}
