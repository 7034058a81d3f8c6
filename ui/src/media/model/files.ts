/** The files of a media folder: rows of the two lists, how they are sorted, named and shown. */

import { numbers } from "../../labels/formats";

export type MediaKind = "images" | "documents";

export interface MediaFile {
  readonly kind: MediaKind;
  readonly folder: string;
  readonly title: string;
  /** Empty for decoration, and where nobody was asked yet. */
  readonly alt: string;
  /** Whether somebody has decided about the alternative text. */
  readonly asked: boolean;
  /** Below the site's directory: "001/002/name.jpg". */
  readonly path: string;
  readonly size: number;
  readonly width: number;
  readonly height: number;
  readonly type: string;
}

export type Order = "title" | "name" | "size" | "type";

export const baseName = (path: string): string => path.slice(path.lastIndexOf("/") + 1);

export const extensionOf = (path: string): string => {
  const name = baseName(path);
  const dot = name.lastIndexOf(".");
  return dot > 0 ? name.slice(dot + 1).toLowerCase() : "";
};

/** A title that an author would have written: words instead of a file's name. */
export function proposedTitle(filename: string): string {
  const dot = filename.lastIndexOf(".");
  const words = (dot > 0 ? filename.slice(0, dot) : filename)
    .replace(/[_\-.]+/g, " ")
    .replace(/\s+/g, " ")
    .trim();
  const title = words === "" ? filename : words.charAt(0).toLocaleUpperCase() + words.slice(1);
  return [...title].slice(0, 50).join("");
}

/** A free name beside one that is taken: "plan.pdf" gives "plan-2.pdf". */
export function freeName(filename: string, taken: ReadonlySet<string>): string {
  const dot = filename.lastIndexOf(".");
  const [stem, end] = dot > 0 ? [filename.slice(0, dot), filename.slice(dot)] : [filename, ""];
  for (let number = 2; ; number += 1) {
    const name = `${stem}-${number}${end}`;
    if (!taken.has(name.toLowerCase())) return name;
  }
}

export function filtered(files: readonly MediaFile[], words: string): MediaFile[] {
  const wanted = words.toLocaleLowerCase().split(/\s+/).filter(Boolean);
  return files.filter((file) => {
    const text = `${file.title} ${baseName(file.path)} ${file.alt}`.toLocaleLowerCase();
    return wanted.every((word) => text.includes(word));
  });
}

export function sorted(files: readonly MediaFile[], by: Order, down: boolean): MediaFile[] {
  const compare = (a: MediaFile, b: MediaFile): number => {
    if (by === "size") return a.size - b.size;
    if (by === "name") return baseName(a.path).localeCompare(baseName(b.path));
    if (by === "type") return extensionOf(a.path).localeCompare(extensionOf(b.path)) || a.title.localeCompare(b.title);
    return a.title.localeCompare(b.title, undefined, { numeric: true, sensitivity: "base" });
  };
  return [...files].sort((a, b) => (down ? -compare(a, b) : compare(a, b)));
}

export function sizeText(bytes: number, locale: string): string {
  if (bytes < 1024) return `${bytes} B`;
  const [value, unit] = bytes < 1024 * 1024 ? [bytes / 1024, "KB"] : [bytes / 1024 / 1024, "MB"];
  return `${numbers(locale, { maximumFractionDigits: value < 10 ? 1 : 0 }).format(value)} ${unit}`;
}

/** Each segment encoded, so that a name with "#" or "?" is still an address. */
export const encodedPath = (path: string): string => path.split("/").map(encodeURIComponent).join("/");
