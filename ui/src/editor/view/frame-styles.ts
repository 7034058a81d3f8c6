// Styles that the shell gives to a page that is shown for editing. They come by script, as no policy of a page allows
// or forbids them.

const css = `
table.bodyborder, table.bodyborder > tbody, table.bodyborder > tbody > tr, table.bodyborder > tbody > tr > td.bodycontent { display: contents !important }
table.bodyborder > tbody > tr:has(> th.bodyheader) { display: none !important }
#bodySetup { display: none !important }
tvx-body { display: block; min-height: 1em; overflow-wrap: anywhere }
tvx-body[data-words] { display: inline-block; min-width: 1ch }
tvx-body.ProseMirror { position: relative; white-space: pre-wrap; white-space: break-spaces; font-variant-ligatures: none; outline: 2px solid #0b57d0; outline-offset: 4px; border-radius: 2px }
tvx-body.ProseMirror[data-words] { outline-offset: 2px }
tvx-body.ProseMirror pre { white-space: pre-wrap }
tvx-run { display: block }
tvx-kept { display: inline }
tvx-island { display: inline; position: relative }
tvx-island-block { display: block; position: relative }
.ProseMirror tvx-island:hover, .ProseMirror tvx-island-block:hover { outline: 1px dashed #855600; cursor: pointer }
.ProseMirror .ProseMirror-selectednode { outline: 2px solid #0b57d0 }
tvx-island[data-quiet], tvx-island-block[data-quiet] { display: none }
.ProseMirror tvx-island[data-quiet] { display: inline }
.ProseMirror tvx-island-block[data-quiet] { display: block; margin: 4px 0 }
.ProseMirror table > tvx-island-block[data-quiet], .ProseMirror tbody > tvx-island-block[data-quiet], .ProseMirror tr > tvx-island-block[data-quiet] { display: table-row }
tvx-chip { display: inline-block; max-width: 100%; padding: 0 6px; border: 1px solid #b7a06b; border-radius: 4px; background: #fbefd5; color: #4a3600; font: 12px/18px ui-monospace, monospace; letter-spacing: 0; text-transform: none; text-indent: 0; vertical-align: baseline; overflow: hidden; white-space: nowrap; text-overflow: ellipsis }
tvx-box { display: flex; align-items: center; justify-content: center; min-height: 96px; padding: 12px; background: #e2e4e0; color: #1d2733; font: 12px/16px sans-serif; overflow-wrap: anywhere }
.ProseMirror a { cursor: text }
.ProseMirror img { cursor: default }
.ProseMirror-hideselection *::selection { background: transparent }
.ProseMirror-gapcursor { display: none; pointer-events: none; position: absolute }
.ProseMirror-gapcursor:after { content: ""; display: block; position: absolute; top: -2px; width: 20px; border-top: 1px solid currentColor }
.ProseMirror-focused .ProseMirror-gapcursor { display: block }
.ProseMirror-separator { display: inline !important; border: 0 !important; margin: 0 !important; width: 0 !important; height: 0 !important }
.ProseMirror td, .ProseMirror th { min-width: 1.5em }
a.badLink { text-decoration: underline wavy #b3261e; text-decoration-skip-ink: none }
tvx-found { outline: 2px solid #855600; outline-offset: 2px }
`;

const styled = new WeakSet<Document>();

/** Puts the styles into a document, once. */
export function styleFrame(doc: Document): void {
  const view = doc.defaultView;
  if (!view || styled.has(doc)) return;
  styled.add(doc);
  const sheet = new (view as Window & typeof globalThis).CSSStyleSheet();
  sheet.replaceSync(css);
  doc.adoptedStyleSheets = [...doc.adoptedStyleSheets, sheet];
}
