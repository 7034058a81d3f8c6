// Pictures on their way into a text: sent, described, written down.
import { html } from "lit";
import { createRef, ref } from "lit/directives/ref.js";
import { Batch, call } from "../api";
import { connection } from "../api/connection";
import { dialog, toast } from "../kit";
import { L, t } from "../labels";
import { pathsFrom, withLatest } from "./model/choosing";
import { escapeAttribute } from "./model/tags";

/** A picture of the library. */
export interface Picture {
  path: string;
  title: string;
  width: number;
  height: number;
  /** null: nobody has been asked yet. */
  alt: string | null;
}

const recentAt = (site: string) => `torvex.pictures.recent.${site}`;

/** Paths of the pictures that this browser put into texts lately. */
export const recentPaths = (site: string): string[] => pathsFrom(localStorage.getItem(recentAt(site)));

export const rememberPicture = (site: string, { path }: Picture): void =>
  localStorage.setItem(recentAt(site), JSON.stringify(withLatest(recentPaths(site), path)));

/** Those of them that are still there, as the library has them now. */
export async function recentPictures(site: string): Promise<Picture[]> {
  const batch = new Batch();
  const asked = recentPaths(site).map((path) => ({
    path,
    found: batch.do("registers.getMedia", { site, folderType: "images", folder: "", words: path, from: 0 }),
  }));
  await batch.run();
  return asked.flatMap(({ path, found }) => (found.value as unknown as Picture[]).filter((one) => one.path === path));
}

export const addressOf = (site: string, path: string) =>
  `/images/${site}/${path.split("/").map(encodeURIComponent).join("/")}`;

export function imageTag(site: string, { path, width, height }: Picture, alt: string): string {
  const size = width > 0 && height > 0 ? ` width="${width}" height="${height}"` : "";
  return `<img src="${escapeAttribute(addressOf(site, path))}"${size} alt="${escapeAttribute(alt)}">`;
}

/** What a picture shows, for who can't see it; "" for decoration, null when the question was left. */
export async function altDialog(address: string, proposal: string): Promise<string | null> {
  const field = createRef<HTMLTextAreaElement>();
  let text = "";
  // The field goes with the dialog.
  const take = () => {
    text = field.value?.value.trim() ?? "";
    return text !== "";
  };
  const answer = await dialog({
    title: t(L.altQuestion),
    body: () => html`<div class="stack">
      <img class="alt-picture" src=${address} alt="" width="240">
      <div class="field"><label for="alt-text">${t(L.altText)}</label><textarea id="alt-text" class="area" rows="2" autofocus .value=${proposal} ${ref(field)}></textarea>
      <p class="note">${t(L.altHint)}</p></div></div>`,
    actions: () => [
      { name: "none", label: t(L.decoration) },
      { name: "text", label: t(L.insert), kind: "primary", run: take },
    ],
  });
  if (answer === "none") return "";
  return answer === "text" ? text : null;
}

interface Stored {
  path: string;
  title: string;
  width: number;
  height: number;
  alt: string | null;
}

async function folderFor(site: string): Promise<string> {
  const folders = (await call("registers.getFolders", { site, folderType: "images" })) as { folder: string }[];
  const kept = localStorage.getItem(`torvex.pictures.${site}`) ?? "";
  return folders.find(({ folder }) => folder === kept)?.folder ?? folders[0]?.folder ?? "";
}

const numbered = (name: string, number: number) =>
  number < 2 ? name : name.replace(/(\.[^.]*)?$/, (ending) => `-${number}${ending}`);

/** Sends a file to the library by pieces; after a break of the line it goes on. */
async function send(file: File, site: string, folder: string, number: number): Promise<Stored> {
  const { Upload } = await import("tus-js-client");
  return new Promise((resolve, reject) => {
    const name = numbered(file.name || "picture.png", number);
    const upload = new Upload(file, {
      endpoint: "/torvex/api/uploads",
      retryDelays: [0, 1000, 3000, 10_000],
      chunkSize: 4 * 1024 * 1024,
      headers: { "X-Torvex-Token": connection.token },
      storeFingerprintForResuming: false,
      metadata: {
        site,
        folder,
        folderType: "images",
        filename: name,
        title: name.replace(/\.[^.]*$/, ""),
        filetype: file.type,
      },
      onShouldRetry: (error) => [0, 423, 500, 502, 503].includes(error.originalResponse?.getStatus() ?? 0),
      onSuccess: ({ lastResponse }) => resolve((JSON.parse(lastResponse.getBody()) as { result: Stored }).result),
      onError: reject,
    });
    upload.start();
  });
}

function problemIn(error: unknown): { code?: string; detail?: string } {
  const response = (error as { originalResponse?: { getBody(): string } }).originalResponse;
  try {
    return JSON.parse(response?.getBody() ?? "{}");
  } catch {
    return {};
  }
}

/** Puts a file into the library, under another name when the first is taken. */
export async function upload(file: File, site: string): Promise<Stored | null> {
  const folder = await folderFor(site);
  for (let number = 1; number < 50; ++number) {
    try {
      return await send(file, site, folder, number);
    } catch (error) {
      const { code, detail } = problemIn(error);
      if (code === "exists") continue;
      toast(`${t(L.couldNotUpload, { name: file.name })} ${detail ?? ""}`, { kind: "danger" });
      return null;
    }
  }
  return null;
}

export async function keepAlt(site: string, { path, title }: Picture, alt: string): Promise<void> {
  await call("registers.saveMedia", { site, folderType: "images", path, title, alt }).catch(() => {});
}

/** Sends a picture, asks what it shows, and answers its tag. */
export async function insertPicture(file: File, site: string): Promise<string | null> {
  const done = toast(t(L.uploading, { name: file.name }));
  const stored = await upload(file, site);
  done();
  if (!stored) return null;
  const alt = (await altDialog(addressOf(site, stored.path), "")) ?? "";
  await keepAlt(site, stored, alt);
  rememberPicture(site, stored);
  return imageTag(site, stored, alt);
}
