import { isJSON, type Value } from './value.js';

// No text that means something holds it.
const negativeZero = '\uffff-0';

/** The value as JavaScript, and `null` for what JSON lacks. */
export function encode(value: Value | undefined): string {
    if (value === undefined || !isJSON(value))
        return 'null';
    // JSON.stringify writes -0 without its sign.
    return JSON.stringify(value, (_name, member) => (Object.is(member, -0) ? negativeZero : member))
        .split(JSON.stringify(negativeZero))
        .join('-0');
}

/**
 * Runs a text as a script of the page, whose top-level names it can use. As in the app, what goes wrong in it is an error
 * of the page that nobody caught.
 */
function evaluate(script: string): void {
    try {
        // Called by another name, it runs in the global scope.
        const evaluateGlobally = eval;
        evaluateGlobally(script);
    } catch (error) {
        reportError(error);
    }
}

/** Answers as the app does. */
export function answer(callback: string, encoded: string): void {
    // The app runs an alert before each answer, which shows nothing there. The browser's own would stop the page. A
    // quotation mark in the value ends the text too early, in the app as here.
    const isNative = String(window.alert).includes('[native code]');
    evaluate(`javascript:${isNative ? '' : 'alert'}('${encoded}');`);
    evaluate(`${callback}(${encoded});`);
}
