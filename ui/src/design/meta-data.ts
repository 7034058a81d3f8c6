/** Tags of a site and what its pages have for them, as they come from the server and go there. */

import { Batch, call } from "../api";
import { Problem } from "../api/problem";
import { L, t } from "../labels";
import type { MetaCell, MetaLine, MetaPage } from "./model/meta-sheet";

export const META = 120;
/** The server tells of so many pages at once. */
export const PAGES = 200;

export interface MetaTag {
  readonly id: number;
  readonly name: string;
  readonly description: string;
}

export interface MetaTags {
  readonly tags: readonly MetaTag[];
  /** As it came: what a save expects to find again. */
  readonly expected: unknown;
}

export async function tagsOf(site: string): Promise<MetaTags> {
  const work = new Batch();
  const tags = work.do("cManager.getMetaTags", { site });
  await work.run();
  return {
    tags: tags.value.map((row) => ({
      id: row.metaData_id,
      name: row.metaData_name,
      description: row.metaData_description,
    })),
    expected: tags.raw,
  };
}

export async function addTag(site: string, name: string, description: string): Promise<void> {
  const metaTagName = name.trim();
  if (!metaTagName) throw new Problem({ status: 409, detail: t(L.nameIsMissing) });
  const taken = await call("cManager.checkMetadata", { site, metaDataId: 0, name: metaTagName });
  if (taken === "1") throw new Problem({ status: 409, detail: t(L.tagIsTaken) });
  await call("cManager.saveMetaTag", { site, metaTagName, metaTagDescription: description });
}

/** Describes a tag, unless the site's tags have been changed since they were read. */
export async function describeTag(site: string, was: MetaTags, name: string, description: string): Promise<void> {
  const work = new Batch();
  work.do("cManager.getMetaTags", { site }, { expect: { is: was.expected } });
  work.do("cManager.saveMetaTag", { site, metaTagName: name, metaTagDescription: description });
  await work.run();
}

export const removeTag = (site: string, id: number): Promise<unknown> =>
  call("cManager.deleteMetaTag", { site, metaTagIdent: String(id) });

export const linesOf = (site: string, lang: string, tag: number, from: number): Promise<MetaLine[]> =>
  call("registers.getMetaSheet", { site, lang, tag, from });

/** What a save expected isn't there any more. */
export class OthersCell extends Problem {
  constructor(readonly theirs: Pick<MetaCell, "value" | "inherited">) {
    super({ status: 412, detail: t(L.metaOthers, { value: theirs.inherited ? t(L.fromAbove) : theirs.value }) });
  }
}

/**
 * Puts a value in the place of one. The page counts as changed by it, so that it can be approved and published: its setup is
 * saved as it is.
 */
export async function saveCell(
  { pageId, title }: MetaPage,
  tag: number,
  was: MetaCell,
  { value, inherited }: Pick<MetaCell, "value" | "inherited">,
): Promise<void> {
  const pageIdent = String(pageId);
  const asked = new Batch();
  const now = asked.do("cManager.getMetaData", { pageIdent, mode: "D" });
  await asked.run();
  const own = now.value.find((row) => row.metaData_id === tag);
  const theirs = {
    value: (own?.metaData_value ?? "").replace(/\r\n?/g, "\n"),
    inherited: own?.metaData_inherited === 1,
  };
  if (theirs.value !== was.value || theirs.inherited !== was.inherited) throw new OthersCell(theirs);
  const work = new Batch();
  work.do("cManager.getMetaData", { pageIdent, mode: "D" }, { expect: { is: now.raw } });
  work.do("cManager.getPage", { pageIdent, mode: "D" });
  // The word that stands for no title would be saved as one.
  if (title === "") work.set("cManager", "pgTitle", "");
  work.do("cManager.savePageSetup", { pageIdent });
  const metaDataValue = value.replaceAll("\n", "###");
  work.do("cManager.saveMetaData", { pageIdent, metaIdent: String(tag), metaDataValue, inherited });
  await work.run();
}
