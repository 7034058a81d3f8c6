// What "/" at the start of a word offers.
import { html, nothing, type TemplateResult } from "lit";
import type { Command, EditorState } from "prosemirror-state";
import type { EditorView } from "prosemirror-view";
import { type IconName, icon } from "../kit";
import { L, t } from "../labels";
import { groups } from "./settings";
import * as commands from "./view/commands";
import { insertTable } from "./view/tables";

export interface SlashItem {
  id: string;
  label: string;
  icon: IconName;
  command?: Command;
}

function allItems(): SlashItem[] {
  const headings: SlashItem[] = (["h2", "h3", "h4"] as const).map((tag, i) => ({
    id: tag,
    label: t(L.headingOfLevel, { level: i + 2 }),
    icon: "heading",
    command: commands.setLine(tag),
  }));
  return [
    ...(groups.value.headings ? headings : []),
    { id: "p", label: t(L.paragraph), icon: "pilcrow", command: commands.setLine("p") },
    { id: "ul", label: t(L.bulletList), icon: "list", command: commands.toggleList("ul") },
    { id: "ol", label: t(L.numberedList), icon: "list-ordered", command: commands.toggleList("ol") },
    { id: "quote", label: t(L.quotation), icon: "quote", command: commands.quote },
    { id: "table", label: t(L.table), icon: "table", command: insertTable(3, 3) },
    { id: "image", label: t(L.picture), icon: "image" },
    { id: "link", label: t(L.link), icon: "link" },
    { id: "hr", label: t(L.ruleAcross), icon: "minus", command: commands.insertRule },
  ];
}

const typed = /(?:^|\s)(\/([\p{L}\d ]{0,20}))$/u;

function typedHere({ selection, doc }: EditorState): string | null {
  const { $from, empty } = selection;
  if (!empty || !$from.parent.inlineContent || doc.inlineContent) return null;
  const before = $from.parent.textBetween(0, $from.parentOffset, undefined, "\ufffc");
  return typed.exec(before)?.[1] ?? null;
}

export class SlashMenu {
  private armed = false;
  private items: SlashItem[] = [];
  private at = 0;
  length = 0;

  get open(): boolean {
    return this.items.length > 0;
  }

  close(): void {
    this.armed = false;
    this.items = [];
  }

  follow(state: EditorState, onlyWords: boolean): void {
    const text = this.armed && !onlyWords ? typedHere(state) : null;
    if (text === null) {
      this.items = [];
      return;
    }
    const words = text.slice(1).toLowerCase();
    this.length = text.length;
    this.items = allItems().filter(({ label, id }) => label.toLowerCase().includes(words) || id.startsWith(words));
    this.at = Math.min(this.at, Math.max(0, this.items.length - 1));
  }

  /** What a key press chooses; "taken" when it only moved about here. */
  key(event: KeyboardEvent, _state: EditorState): SlashItem | "taken" | null {
    if (event.key === "/" && !event.ctrlKey && !event.metaKey) {
      this.armed = true;
      this.at = 0;
    }
    if (!this.open) return null;
    const moves: Record<string, number> = { ArrowDown: 1, ArrowUp: -1 };
    const move = moves[event.key];
    if (move) this.at = (this.at + move + this.items.length) % this.items.length;
    else if (event.key === "Escape") this.close();
    else if (event.key === "Enter" || event.key === "Tab") return this.items[this.at] ?? null;
    else return null;
    event.preventDefault();
    return "taken";
  }

  /** Where the list goes; what is given back puts it there. */
  measured(host: HTMLElement, view: EditorView): (() => void) | undefined {
    const list = host.querySelector<HTMLElement>(".slash-menu");
    const layer = host.querySelector<HTMLElement>(".frame-layer");
    if (!list || !layer) return undefined;
    const { left, top, bottom } = view.coordsAtPos(view.state.selection.from);
    const below = bottom + 6 + list.offsetHeight <= layer.clientHeight;
    const y = below ? bottom + 6 : Math.max(4, top - list.offsetHeight - 6);
    const x = Math.min(left, layer.clientWidth - list.offsetWidth - 8);
    return () => {
      list.style.transform = `translate(${Math.round(x)}px, ${Math.round(y)}px)`;
      list.querySelector("[aria-selected=true]")?.scrollIntoView({ block: "nearest" });
    };
  }

  render(choose: (item: SlashItem) => void): TemplateResult | typeof nothing {
    if (!this.open) return nothing;
    return html`<ul class="slash-menu" role="listbox" aria-label=${t(L.insert)}>
        ${this.items.map((item, i) => html`<li role="option" aria-selected=${i === this.at} @pointerdown=${(event: Event) => event.preventDefault()} @click=${() => choose(item)}>${icon(item.icon)}${item.label}</li>`)}
      </ul><span class="unseen" role="status">${this.items[this.at]?.label ?? ""}</span>`;
  }
}
