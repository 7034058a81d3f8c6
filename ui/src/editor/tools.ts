// The tools above what is chosen in a body.
import { html, nothing, type TemplateResult } from "lit";
import { NodeSelection } from "prosemirror-state";
import { type IconName, icon, type MenuEntry, openMenu, rule } from "../kit";
import { L, t } from "../labels";
import type { Editing } from "./editing";
import { groups } from "./settings";
import * as commands from "./view/commands";
import { addColumn, addRow, deleteColumn, deleteRow, deleteTable, tableHere } from "./view/tables";

interface Tool {
  label: string;
  face: TemplateResult;
  key?: string;
  on?: boolean;
  menu?: boolean;
  run: (anchor: HTMLElement) => void;
}

const letter = (text: string, kind = "") => html`<span class="letter ${kind}" aria-hidden="true">${text}</span>`;
const face = (name: IconName) => html`${icon(name)}`;

type Named = [name: string, value: string];

const colors = (): Named[] => [
  [t(L.colorDark), "#1d2733"],
  [t(L.colorRed), "#b3261e"],
  [t(L.colorAmber), "#855600"],
  [t(L.colorGreen), "#1f6f54"],
  [t(L.colorBlue), "#1f5fa8"],
  [t(L.colorViolet), "#6a3fa0"],
];
const backs = (): Named[] => [
  [t(L.colorAmber), "#fbefd5"],
  [t(L.colorGreen), "#dcefe6"],
  [t(L.colorBlue), "#e2edf9"],
  [t(L.colorRed), "#fbe4e2"],
];
const fonts = (): Named[] => [
  ["Georgia", "Georgia, serif"],
  ["Arial", "Arial, sans-serif"],
  ["Verdana", "Verdana, sans-serif"],
  ["Courier New", "'Courier New', monospace"],
];
const sizes = (): Named[] => [
  [t(L.sizeSmall), "0.85em"],
  [t(L.sizeUsual), "1em"],
  [t(L.sizeLarge), "1.25em"],
  [t(L.sizeHuge), "1.5em"],
];

function lineMenu(editing: Editing): MenuEntry[] {
  const now = commands.lineTag(editing.state);
  const entry = (tag: string, label: string, key = "") => ({
    label,
    ...(key ? { key } : {}),
    checked: now === tag,
    run: () => editing.run(commands.setLine(tag)),
  });
  const headings = groups.value.headings
    ? [1, 2, 3, 4].map((level) => entry(`h${level}`, t(L.headingOfLevel, { level }), `Ctrl+Alt+${level}`))
    : [];
  return [
    entry("p", t(L.paragraph), "Ctrl+Alt+0"),
    ...headings,
    entry("pre", t(L.preformatted)),
    rule,
    { label: t(L.quotation), icon: "quote", key: "Ctrl+Shift+9", run: () => editing.run(commands.quote) },
  ];
}

function lineWord(tag: string): string {
  const level = /^h([1-6])$/.exec(tag)?.[1];
  if (level) return t(L.headingOfLevel, { level });
  return tag === "pre" ? t(L.preformatted) : t(L.paragraph);
}

/** Classes for paragraphs: those that the site's own style sheets name so, and those that stand in its texts. */
function classesOf(editing: Editing): string[] {
  const found = new Set<string>();
  for (const line of editing.document.querySelectorAll("td.bodycontent p[class]"))
    for (const name of line.classList) found.add(name);
  for (const sheet of editing.document.styleSheets) {
    try {
      for (const each of sheet.cssRules) {
        for (const [, name] of ((each as CSSStyleRule).selectorText ?? "").matchAll(
          /(?:^|[\s,>])p\.([a-z][\w-]*)\s*(?=,|$)/gi,
        ))
          found.add(name!);
      }
    } catch {
      // Sheets of other hosts don't show what is in them.
    }
  }
  return [...found].slice(0, 16);
}

/** Choices of one property, of which the last takes it off. */
function choices(editing: Editing, title: string, property: string, values: Named[]): MenuEntry[] {
  const set = (value: string) => () => editing.run(commands.setStyle(property, value));
  const entries = values.map(([name, value]) => ({ label: `${title}: ${name}`, run: set(value) }));
  return [...entries, { label: `${title}: ${t(L.asTheSite)}`, run: set("") }];
}

const between = (one: MenuEntry[], other: MenuEntry[]) => [
  ...one,
  ...(one.length && other.length ? [rule] : []),
  ...other,
];

function colorMenu(editing: Editing): MenuEntry[] {
  const { fontcolor, backcolor } = groups.value;
  const words = fontcolor ? choices(editing, t(L.colorOfText), "color", colors()) : [];
  return between(words, backcolor ? choices(editing, t(L.colorBehind), "background-color", backs()) : []);
}

function fontMenu(editing: Editing): MenuEntry[] {
  const { fontname, fontsize } = groups.value;
  const names = fontname ? choices(editing, t(L.fontName), "font-family", fonts()) : [];
  return between(names, fontsize ? choices(editing, t(L.fontSize), "font-size", sizes()) : []);
}

function looksMenu(editing: Editing): MenuEntry[] {
  const now = commands.lineClass(editing.state);
  const choose = (name: string) => () => editing.run(commands.setLineClass(now === name ? "" : name));
  const classes = groups.value.styles
    ? classesOf(editing).map((name) => ({ label: name, checked: now === name, run: choose(name) }))
    : [];
  return between(classes, [
    { label: t(L.withoutLooks), icon: "eraser", key: "Ctrl+\\", run: () => editing.run(commands.clearLooks) },
  ]);
}

const tableMenu = (editing: Editing): MenuEntry[] => [
  { label: t(L.rowBelow), run: () => editing.run(addRow) },
  { label: t(L.columnBehind), run: () => editing.run(addColumn) },
  { label: t(L.withoutRow), run: () => editing.run(deleteRow) },
  { label: t(L.withoutColumn), run: () => editing.run(deleteColumn) },
  { label: t(L.withoutTable), danger: true, run: () => editing.run(deleteTable) },
];

function toolsOf(editing: Editing): (Tool | typeof rule)[] {
  const { state, onlyWords } = editing;
  const mark = (tag: string, label: string, look: TemplateResult, key = ""): Tool => ({
    label,
    face: look,
    key,
    on: commands.hasTag(state, tag),
    run: () => editing.run(commands.toggleTag(tag)),
  });
  const words = [
    mark("strong", t(L.bold), letter("B"), "Ctrl+B"),
    mark("em", t(L.italic), letter("I", "slanted"), "Ctrl+I"),
  ];
  const link: Tool = {
    label: t(L.link),
    face: face("link"),
    key: "Ctrl+L",
    on: commands.linkHere(state) !== undefined,
    run: () => void editing.link(),
  };
  const source: Tool = {
    label: t(L.source),
    face: face("code"),
    key: "Ctrl+Shift+H",
    run: () => void editing.source(),
  };
  if (onlyWords) return [...words, link, rule, source];
  const list = commands.listTag(state);
  const menu = (label: string, look: TemplateResult, entries: () => MenuEntry[]): Tool => ({
    label,
    face: look,
    menu: true,
    run: (anchor) => void openMenu(anchor, entries(), label),
  });
  const chosen = state.selection instanceof NodeSelection ? state.selection.node.type.name : "";
  const image: Tool =
    chosen === "image"
      ? { label: t(L.altText), face: html`ALT`, on: true, run: () => void editing.describe() }
      : { label: t(L.picture), face: face("image"), run: () => void editing.image() };
  return [
    menu(t(L.kindOfLine), html`<span>${lineWord(commands.lineTag(state))}</span>${icon("chevron-down")}`, () =>
      lineMenu(editing),
    ),
    rule,
    ...words,
    mark("u", t(L.underlined), letter("U", "lined"), "Ctrl+U"),
    link,
    image,
    rule,
    {
      label: t(L.bulletList),
      face: face("list"),
      key: "Ctrl+Shift+8",
      on: list === "ul",
      run: () => editing.run(commands.toggleList("ul")),
    },
    {
      label: t(L.numberedList),
      face: face("list-ordered"),
      key: "Ctrl+Shift+7",
      on: list === "ol",
      run: () => editing.run(commands.toggleList("ol")),
    },
    ...(tableHere(state) ? [menu(t(L.table), face("table"), () => tableMenu(editing))] : []),
    ...looksTools(editing, menu),
    source,
  ];
}

type MakeMenu = (label: string, look: TemplateResult, entries: () => MenuEntry[]) => Tool;

function looksTools(editing: Editing, menu: MakeMenu): Tool[] {
  const { fontcolor, backcolor, fontname, fontsize } = groups.value;
  return [
    ...(fontcolor || backcolor ? [menu(t(L.colorTools), face("palette"), () => colorMenu(editing))] : []),
    ...(fontname || fontsize ? [menu(t(L.fontTools), face("type"), () => fontMenu(editing))] : []),
    menu(t(L.looks), face("eraser"), () => looksMenu(editing)),
  ];
}

function roam(event: KeyboardEvent, editing: Editing): void {
  const bar = event.currentTarget as HTMLElement;
  const buttons = [...bar.querySelectorAll<HTMLElement>("button")];
  const at = buttons.indexOf(event.target as HTMLElement);
  const moves: Record<string, number> = {
    ArrowRight: at + 1,
    ArrowLeft: at - 1 + buttons.length,
    Home: 0,
    End: buttons.length - 1,
  };
  const to = moves[event.key];
  if (to !== undefined) buttons[to % buttons.length]?.focus();
  else if (event.key === "Escape") editing.focus();
  else return;
  event.preventDefault();
  event.stopPropagation();
}

export function toolbar(editing: Editing): TemplateResult {
  let first = true;
  const button = (tool: Tool) => {
    const tab = first ? 0 : -1;
    first = false;
    return html`<button type="button" class="button quiet small" tabindex=${tab} aria-label=${tool.label} title=${tool.key ? `${tool.label} (${tool.key})` : tool.label}
      aria-pressed=${tool.menu || tool.on === undefined ? nothing : String(tool.on)} aria-haspopup=${tool.menu ? "menu" : nothing}
      @click=${(event: Event) => tool.run(event.currentTarget as HTMLElement)}>${tool.face}</button>`;
  };
  return html`<div class="edit-tools" role="toolbar" aria-label=${t(L.textTools)} @pointerdown=${(event: Event) => event.preventDefault()} @keydown=${(event: KeyboardEvent) => roam(event, editing)}>
    ${toolsOf(editing).map((tool) => (tool === rule ? html`<span class="between"></span>` : button(tool)))}
  </div>`;
}
