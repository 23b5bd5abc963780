// Made from the SDK's own source when the package is built: see tools/bridge-script.sed.
declare module 'zelvora-bridge-script' {
    /** The fixed text of the script that the app injects, between its insertions. */
    export const pieces: readonly string[];
}
