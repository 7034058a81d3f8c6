/** Titles and alternative texts of many files in one table: Tab and Enter go from field to field. */

import { html, nothing, type TemplateResult } from "lit";
import { icon } from "../kit/icon";
import { dialog, type TvxDialog } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, plural, t } from "../labels";
import { addressOf, saveFile } from "./data";
import { baseName, type MediaFile } from "./model/files";

interface Line {
  readonly file: MediaFile;
  title: string;
  alt: string;
  decoration: boolean;
  fault: string;
}

class TitlesTable {
  private readonly lines: Line[];
  private box: TvxDialog | undefined;

  constructor(
    private readonly site: string,
    files: readonly MediaFile[],
  ) {
    this.lines = files.map((file) => ({
      file,
      title: file.title,
      alt: file.alt,
      decoration: file.asked && file.alt === "",
      fault: "",
    }));
  }

  async open(): Promise<boolean> {
    const answer = await dialog({
      title: t(L.titlesTitle),
      wide: true,
      body: (box) => {
        this.box = box;
        return this.body();
      },
      actions: () => [
        { name: "cancel", label: t(L.cancel) },
        { name: "go", label: t(L.save), kind: "primary", run: () => this.save() },
      ],
    });
    return answer === "go";
  }

  private get pictures(): boolean {
    return this.lines.some((line) => line.file.kind === "images");
  }

  private body(): TemplateResult {
    return html`<p class="note">${this.pictures ? t(L.mediaAltHint) : ""}</p>
      <table class="titles-table"><thead><tr><td></td><th scope="col">${t(L.title)}</th>${this.pictures ? html`<th scope="col">${t(L.mediaAlt)}</th><th scope="col">${t(L.mediaDecoration)}</th>` : nothing}</tr></thead>
      <tbody @keydown=${this.key}>${this.lines.map((line) => this.line(line))}</tbody></table>`;
  }

  private line(line: Line): TemplateResult {
    const { file } = line;
    const name = baseName(file.path);
    return html`<tr>
      <th scope="row">${file.kind === "images" ? html`<img class="media-small" src=${addressOf(this.site, file)} alt=${name} />` : html`<span class="note">${name}</span>`}</th>
      <td><input class="input" maxlength="50" aria-label="${t(L.title)}: ${name}" aria-invalid=${line.fault ? "true" : nothing} .value=${line.title} @input=${(
        event: Event,
      ) => {
        line.title = (event.target as HTMLInputElement).value;
        line.fault = "";
      }} />${line.fault ? html`<p class="note wrong">${icon("circle-alert")} ${line.fault}</p>` : nothing}</td>
      ${
        file.kind === "images"
          ? html`<td><input class="input" aria-label="${t(L.mediaAlt)}: ${name}" ?disabled=${line.decoration} .value=${line.alt} @input=${(
              event: Event,
            ) => {
              line.alt = (event.target as HTMLInputElement).value;
            }} /></td>
            <td class="titles-tick"><input type="checkbox" aria-label="${t(L.mediaDecoration)}: ${name}" .checked=${line.decoration} @change=${(
              event: Event,
            ) => {
              line.decoration = (event.target as HTMLInputElement).checked;
              this.box?.requestUpdate();
            }} /></td>`
          : nothing
      }</tr>`;
  }

  /** Enter goes down a column, as in a sheet. */
  private readonly key = (event: KeyboardEvent): void => {
    const field = event.target as HTMLInputElement;
    if (event.key !== "Enter" || event.ctrlKey || event.isComposing || field.type === "checkbox") return;
    event.preventDefault();
    const cell = field.closest("td") as HTMLTableCellElement;
    const row = field.closest("tr")?.nextElementSibling as HTMLTableRowElement | null;
    row?.cells[cell.cellIndex]?.querySelector("input")?.focus();
  };

  private changed(line: Line): boolean {
    const { file } = line;
    const alt = line.decoration ? "" : line.alt.trim();
    return line.title.trim() !== file.title || alt !== file.alt || (line.decoration && !file.asked);
  }

  private async save(): Promise<boolean> {
    const lines = this.lines.filter((line) => this.changed(line));
    for (const line of lines) {
      const alt = line.decoration ? "" : line.alt.trim();
      const decided = line.file.kind === "images" && (line.decoration || alt !== "" || line.file.asked);
      try {
        await saveFile(this.site, line.file, line.title.trim(), decided ? alt : undefined);
      } catch (error) {
        line.fault = error instanceof Error ? error.message : String(error);
      }
    }
    const wrong = lines.filter((line) => line.fault).length;
    if (lines.length > wrong) toast(plural(lines.length - wrong, L.namedOne, L.namedMany));
    this.box?.requestUpdate();
    return wrong === 0;
  }
}

export const titlesDialog = (site: string, files: readonly MediaFile[]): Promise<boolean> =>
  new TitlesTable(site, files).open();
