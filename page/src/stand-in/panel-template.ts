// The page's styles may meet the outer element, so all that matters for it is important, and its contents inherit nothing.
const style = `
:host{display:block!important;height:48px!important;transition:height .3s}
:host(.hidden){height:0!important}
main{all:initial;font:13px/1.4 system-ui;color-scheme:light dark}
footer,details,section{position:fixed;z-index:2147483647;right:0;bottom:0}
footer,section{background:Canvas;color:CanvasText}
footer{left:0;height:48px;line-height:48px;padding-left:16px;border-top:1px solid GrayText;transition:transform .3s}
:host(.hidden) footer{transform:translateY(100%)}
@media(prefers-reduced-motion){:host,footer{transition:none}}
summary{list-style:none;margin:8px;padding:6px 12px;border-radius:16px;background:#3a3ab0;color:#fff;cursor:pointer}
summary::-webkit-details-marker{display:none}
section{right:8px;bottom:56px;width:min(420px,100vw - 48px);max-height:70vh;overflow:auto;padding:8px 16px;border:1px solid GrayText;border-radius:8px}
h2{font-size:1em;margin:12px 0 4px}
ul{margin:0;padding:0;max-height:9em;overflow:auto;list-style:none;font:12px monospace;overflow-wrap:anywhere}
ul:empty:after{content:'none'}
li{border-bottom:1px dotted GrayText;padding:2px 0}
small{display:block;font:12px system-ui}
label{display:block}`;

/** The lists are those of values, events and calls. The switches have the names of the faults. */
export const template = `<style>${style}</style><main>
<footer>App footer</footer>
<details><summary></summary><section aria-label="App">
<h2>Stored values</h2><ul tabindex=0 aria-label="Stored values"></ul>
<h2>Queued events <button>Upload</button></h2><ul tabindex=0 aria-label="Queued events"></ul>
<h2>Calls, latest first</h2><ul tabindex=0 aria-label="Calls"></ul>
<h2>Faults</h2>
<label><input type=checkbox name=noAnswer>No answers</label>
<label><input type=checkbox name=noBridge>No bridge (reloads)</label>
<label><input type=checkbox name=noActions>Actions missing (reloads)</label>
</section></details></main>`;
