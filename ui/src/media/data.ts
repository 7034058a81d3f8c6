/** Media of a site as the server tells them, and what a login may do with them. */

import { Batch, call } from "../api";
import { encodedPath, type MediaFile, type MediaKind } from "./model/files";
import type { Folder } from "./model/folders";

const ENTRIES: Readonly<Record<MediaKind, number>> = { images: 111, documents: 112 };
/** As many rows as the server gives at once. */
export const PAGE = 500;

type Row = Readonly<Record<string, unknown>>;

export async function loadFolders(site: string, kind: MediaKind): Promise<Folder[]> {
  const rows = (await call("registers.getFolders", { site, folderType: kind })) as Row[];
  return rows.map((row) => ({
    id: String(row["folder"]),
    name: String(row["name"] ?? ""),
    parent: String(row["parent"] ?? ""),
    level: Number(row["level"]),
    files: Number(row["files"]),
  }));
}

export interface Listing {
  readonly files: readonly MediaFile[];
  readonly more: boolean;
}

export async function loadFiles(
  site: string,
  kind: MediaKind,
  folder: string,
  words = "",
  from = 0,
  signal?: AbortSignal,
): Promise<Listing> {
  const args = { site, folderType: kind, folder, words, from };
  const rows = (await call("registers.getMedia", args, signal ? { signal } : {})) as Row[];
  return { files: rows.map((row) => fileOf(kind, row)), more: rows.length === PAGE };
}

export function fileOf(kind: MediaKind, row: Row): MediaFile {
  const alt = row["alt"];
  return {
    kind,
    folder: String(row["folder"]),
    title: String(row["title"] ?? ""),
    alt: typeof alt === "string" ? alt : "",
    asked: typeof alt === "string",
    path: String(row["path"]),
    size: Number(row["size"] ?? 0),
    width: Number(row["width"] ?? 0),
    height: Number(row["height"] ?? 0),
    type: String(row["type"] ?? ""),
  };
}

export interface MediaRights {
  readonly view: boolean;
  readonly edit: boolean;
}

export async function mediaRights(site: string, kind: MediaKind): Promise<MediaRights> {
  const batch = new Batch();
  const advId = ENTRIES[kind];
  const view = batch.do("cManager.checkAdvRights", { flag: "view", advId, site });
  const edit = batch.do("cManager.checkAdvRights", { flag: "edit", advId, site });
  await batch.run();
  return { view: view.value || edit.value, edit: edit.value };
}

export interface Use {
  readonly pageId: number;
  readonly nodeId: string;
  readonly title: string;
  readonly bodyId: number;
  readonly twin: "D" | "L";
}

/** Pages that show a picture or lead to a document. */
export async function usesOf(site: string, file: Pick<MediaFile, "kind" | "path">): Promise<Use[]> {
  const kind = file.kind === "images" ? "image" : "document";
  return (await call("desk.getUses", { kind, id: `${site}/${file.path}` })) as Use[];
}

export const addressOf = (site: string, file: Pick<MediaFile, "kind" | "path">): string =>
  `/${file.kind === "images" ? "images" : "documents"}/${site}/${encodedPath(file.path)}`;

/** A new folder is born without the name that was asked for; it is given one at once. */
export async function addFolder(site: string, kind: MediaKind, parent: string, name: string): Promise<string> {
  const folder = await call("cManager.addFolder", {
    site,
    parentFolder: parent,
    newFolderName: name,
    folderType: kind,
  });
  await renameFolder(site, kind, folder, name);
  return folder;
}

export const renameFolder = (site: string, kind: MediaKind, folder: string, name: string): Promise<unknown> =>
  call("registers.renameFolder", { site, folderType: kind, folder, name });

export const removeFolder = (site: string, kind: MediaKind, folder: string): Promise<unknown> =>
  call("cManager.deleteFolder", { site, folder, folderType: kind });

/** `alt`: a text, "" for decoration, or nothing to leave it. */
export const saveFile = (site: string, file: MediaFile, title: string, alt?: string): Promise<unknown> =>
  call("registers.saveMedia", {
    site,
    folderType: file.kind,
    path: file.path,
    title,
    ...(alt === undefined ? {} : { alt }),
  });

export const removeFile = (site: string, file: MediaFile): Promise<unknown> =>
  call("registers.deleteMedia", { site, folderType: file.kind, path: file.path });

/** Pages that show the file or lead to it follow. An empty folder is the top. */
export const moveFile = (site: string, file: Pick<MediaFile, "kind" | "path">, folder: string): Promise<unknown> =>
  call("registers.moveMedia", { site, folderType: file.kind, path: file.path, folder });
