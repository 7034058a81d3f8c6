/** The fields by which a table is chosen from a disk, in whatever encoding it is. */

import { html, type TemplateResult } from "lit";
import type { TvxDialog } from "../kit/tvx-dialog";
import { L, t } from "../labels";
import { textOf } from "./model/csv";

const CHARSETS = ["utf-8", "windows-1252", "iso-8859-15", "utf-16le", "windows-1250", "windows-1251", "macintosh"];

/** Reads the file again when the encoding is another; what is wrong with it is said in the dialog. */
export function csvFields(self: TvxDialog, taken: (text: string) => Promise<unknown>): TemplateResult {
  const read = async (): Promise<void> => {
    const file = self.querySelector<HTMLInputElement>("#csv-file")?.files?.[0];
    const charset = self.querySelector<HTMLSelectElement>("#csv-charset")?.value ?? "";
    if (!file) return;
    self.fault = "";
    self.busy = "read";
    try {
      const bytes = new Uint8Array(await file.arrayBuffer());
      let text = "";
      try {
        text = textOf(bytes, charset);
      } catch {
        throw new Error(t(L.wrongCharset));
      }
      await taken(text);
    } catch (error) {
      self.fault = error instanceof Error ? error.message : String(error);
    } finally {
      self.busy = "";
      self.requestUpdate();
    }
  };
  return html`<div class="field"><label for="csv-file">${t(L.csvFile)}</label><input id="csv-file" class="input" type="file" accept=".csv,.txt,.tsv,text/csv" @change=${read} /></div>
    <div class="field"><label for="csv-charset">${t(L.csvCharset)}</label><select id="csv-charset" class="select" @change=${read}>
      <option value="">${t(L.csvCharsetAuto)}</option>${CHARSETS.map((one) => html`<option value=${one}>${one}</option>`)}</select></div>`;
}
