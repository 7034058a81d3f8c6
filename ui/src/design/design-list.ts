/** What the lists of a website's design share: of where one works, read anew when that changes. */

import { html, type PropertyValues } from "lit";
import { Watch } from "../kit/element";
import type { TableColumn } from "../kit/tvx-table";
import { L, t } from "../labels";
import { mayChange } from "../records/lock";
import { type ListWords, RecordList } from "../records/record-list";
import { workplace } from "../shell/workplace";
import type { DesignKind, DesignLine, Place } from "./data";
import "./design.css";

export abstract class DesignList extends RecordList<DesignLine> {
  private where = "";
  /** Where its records are looked for. */
  protected abstract get place(): Place;
  protected abstract get kind(): DesignKind;

  constructor() {
    super();
    new Watch(this, workplace);
  }

  protected get address(): string {
    return this.kind.address;
  }

  protected get key(): string {
    return this.kind.item;
  }

  protected get entry(): number {
    return this.kind.entry;
  }

  protected get words(): ListWords {
    return this.kind;
  }

  protected override willUpdate(changed: PropertyValues<this>): void {
    const { site, lang } = this.place;
    const where = `${site}.${lang}`;
    if (this.where && where !== this.where) void this.load();
    this.where = where;
    super.willUpdate(changed);
  }

  protected override askToAdd(): Promise<boolean> {
    const { site, lang } = this.place;
    return mayChange(this.entry, site, lang);
  }

  protected idOf({ id }: DesignLine): number {
    return id;
  }

  protected nameOf({ name }: DesignLine): string {
    return name;
  }

  protected textsOf({ name, description }: DesignLine): string[] {
    return [name, description];
  }

  protected get columns(): TableColumn<DesignLine>[] {
    return [
      {
        id: "name",
        label: t(L.name),
        cell: (row) =>
          html`${this.link(row, row.name || `[${row.id}]`)}${row.isSystem ? html` <span class="design-mark">${t(L.ofSystem)}</span>` : ""}`,
        by: (row) => row.name,
      },
      { id: "text", label: t(L.description), cell: (row) => row.description, by: (row) => row.description, wide: true },
    ];
  }
}
