/** The folders of a site's media as a tree. */

export interface Folder {
  readonly id: string;
  readonly name: string;
  readonly parent: string;
  readonly level: number;
  /** Files of its own. */
  readonly files: number;
}

/** What a folder is called until somebody names it. */
const NEVER_NAMED = "new folder";

export const namedOr = (folder: Folder, newFolder: string): string =>
  folder.name === "" || folder.name.toLowerCase() === NEVER_NAMED ? newFolder : folder.name;

/** Depth first, children by name, as a tree is read; below closed folders nothing shows. */
export function inTreeOrder(folders: readonly Folder[], open: ReadonlySet<string>): Folder[] {
  const children = byParent(folders);
  const shown: Folder[] = [];
  const walk = (parent: string) => {
    for (const child of children.get(parent) ?? []) {
      shown.push(child);
      if (open.has(child.id)) walk(child.id);
    }
  };
  walk("");
  return shown;
}

function byParent(folders: readonly Folder[]): Map<string, Folder[]> {
  const children = new Map<string, Folder[]>();
  for (const folder of folders) children.set(folder.parent, [...(children.get(folder.parent) ?? []), folder]);
  for (const list of children.values())
    list.sort((a, b) => a.name.localeCompare(b.name, undefined, { numeric: true }) || a.id.localeCompare(b.id));
  return children;
}

export const liesIn = (id: string, branch: string): boolean => id.startsWith(branch);

/** Files of a folder and all below it. */
export function filesBelow(folders: readonly Folder[], branch: string): number {
  return folders.filter((folder) => liesIn(folder.id, branch)).reduce((sum, folder) => sum + folder.files, 0);
}

/** The way from the top to a folder. */
export function trailOf(folders: readonly Folder[], id: string): Folder[] {
  const trail: Folder[] = [];
  for (let at = folders.find((each) => each.id === id); at; at = folders.find((each) => each.id === at?.parent))
    trail.unshift(at);
  return trail;
}
