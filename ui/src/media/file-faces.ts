/** How a file shows in the library: its picture, its name, its facts, and its row in a list. */

import { html, type TemplateResult } from "lit";
import { icon } from "../kit/icon";
import type { TableColumn } from "../kit/tvx-table";
import { interfaceLanguage, L, t } from "../labels";
import { addressOf } from "./data";
import { baseName, extensionOf, type MediaFile, type MediaKind, sizeText } from "./model/files";

export function nameOf(file: MediaFile): string {
  return [file.title || baseName(file.path), factsOf(file), file.kind === "images" && !file.asked ? t(L.noAltYet) : ""]
    .filter(Boolean)
    .join(", ");
}

export function factsOf(file: MediaFile): string {
  const size = sizeText(file.size, interfaceLanguage());
  return file.width ? `${file.width} × ${file.height} · ${size}` : `${extensionOf(file.path).toUpperCase()} · ${size}`;
}

export function pictureOf(site: string, file: MediaFile): TemplateResult {
  if (file.kind === "images") return html`<img src=${addressOf(site, file)} alt="" loading="lazy" decoding="async" />`;
  return html`<span class="media-type">${icon("file-text")}<span>${extensionOf(file.path).toUpperCase()}</span></span>`;
}

const smallPicture = (site: string, file: MediaFile): TemplateResult =>
  file.kind === "images"
    ? html`<img class="media-small" src=${addressOf(site, file)} alt="" loading="lazy" />`
    : icon("file-text");

const alternativeText = (): TableColumn<MediaFile> => ({
  id: "alt",
  label: t(L.mediaAlt),
  cell: (file) =>
    file.asked
      ? file.alt || html`<span class="soft">${t(L.mediaDecoration)}</span>`
      : html`<span class="media-warn">${icon("triangle-alert")}${t(L.noAltYet)}</span>`,
  by: (file) => file.alt,
  wide: true,
});

export function columnsOf(site: string, kind: MediaKind): TableColumn<MediaFile>[] {
  return [
    {
      id: "title",
      label: t(L.title),
      cell: (file) =>
        html`<span class="found-title">${smallPicture(site, file)}<span class="cut">${file.title || baseName(file.path)}</span></span>`,
      by: (file) => file.title,
    },
    {
      id: "name",
      label: t(L.filename),
      cell: (file) => html`<span class="soft">${baseName(file.path)}</span>`,
      by: (file) => baseName(file.path),
      wide: true,
    },
    ...(kind === "images" ? [alternativeText()] : []),
    { id: "facts", label: t(L.bySize), cell: factsOf, by: (file) => file.size, numeric: true },
  ];
}
