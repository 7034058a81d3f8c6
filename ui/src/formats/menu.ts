import { recordsOf, titleOf } from "./text";

/** An entry of the administration menu. */
export interface MenuNode {
  advId: number;
  /** 0 of the installation, 1 of a site, 2 of a site and language. */
  level: number;
  title: string;
  /** The name of its picture, without its ending. */
  icon: string;
  /** Empty for a branch, and for what this login can't open. */
  program: string;
  children: MenuNode[];
}

interface Entry extends MenuNode {
  key: string;
  hasChildren: boolean;
}

function entryOf([advId = "", key = "", title = "", icon = "", program = "", hasChildren = ""]: string[]): Entry {
  return {
    advId: Number(advId),
    key,
    level: Number(key.slice(0, 2)),
    title: titleOf(title),
    icon: icon.trim().replace(/\.\w+$/, ""),
    program: program.trim(),
    hasChildren: hasChildren === "1",
    children: [],
  };
}

const step = 2;
const isReachable = ({ program, children }: MenuNode) => program !== "" || children.length > 0;

function pruned(nodes: MenuNode[]): MenuNode[] {
  return nodes.map((node) => ({ ...node, children: pruned(node.children) })).filter(isReachable);
}

const bare = ({ advId, level, title, icon, program, children }: Entry): MenuNode => ({
  advId,
  level,
  title,
  icon,
  program,
  children,
});

/** The menu of the text that `getAdvancedMap` gives, without branches that lead nowhere. */
export function menuOf(text: string): MenuNode[] {
  if (text === "-1") return [];
  const roots: MenuNode[] = [];
  const byKey = new Map<string, MenuNode>();
  for (const fields of recordsOf(text)) {
    // The last record closes what is open; it has no entry.
    if (fields.length < 6) continue;
    const entry = entryOf(fields);
    const node = bare(entry);
    byKey.set(entry.key, node);
    (byKey.get(entry.key.slice(0, -step))?.children ?? roots).push(node);
  }
  return pruned(roots);
}
