/** What roles give, as a form has it, and what has changed of it. No DOM. */

export const TASKS = ["edit", "approve", "publish", "onOff", "move"] as const;
export type Task = (typeof TASKS)[number];

/** In the order of an operation's flags. */
const FLAGS: readonly Task[] = ["onOff", "move", "publish", "approve", "edit"];

/** What a role may do to the pages of one site and language. */
export interface EditGrant {
  readonly site: string;
  readonly lang: string;
  readonly tasks: ReadonlySet<Task>;
  /** Nodes; none means the whole website. */
  readonly scope: readonly string[];
}

export interface EditRow extends Record<Task, number> {
  readonly site: string;
  readonly lang: string;
  readonly scope: string;
}

export const websiteKey = ({ site, lang }: { site: string; lang: string }): string => `${site}.${lang}`;

export const nodesOf = (scope: string): string[] =>
  scope
    .split(",")
    .map((node) => node.trim())
    .filter((node) => node !== "" && node.toLowerCase() !== "all");

/** By website. */
export function editGrants(rows: readonly EditRow[]): Map<string, EditGrant> {
  const grants = new Map<string, EditGrant>();
  for (const row of rows) {
    const tasks = new Set(TASKS.filter((task) => row[task] === 1));
    if (tasks.size === 0) continue;
    grants.set(websiteKey(row), { site: row.site, lang: row.lang, tasks, scope: nodesOf(row.scope) });
  }
  return grants;
}

export const flagsOf = (tasks: ReadonlySet<Task>): string =>
  FLAGS.map((task) => (tasks.has(task) ? "1" : "0")).join("");

const noGrant = (site: string, lang: string): EditGrant => ({ site, lang, tasks: new Set(), scope: [] });

/** A grant with one task more or less. */
export function withTask(
  grants: ReadonlyMap<string, EditGrant>,
  site: string,
  lang: string,
  task: Task,
  has: boolean,
): Map<string, EditGrant> {
  const before = grants.get(websiteKey({ site, lang })) ?? noGrant(site, lang);
  const tasks = new Set(before.tasks);
  if (has) tasks.add(task);
  else tasks.delete(task);
  return new Map([...grants, [websiteKey(before), { ...before, tasks }]]);
}

export function withScope(
  grants: ReadonlyMap<string, EditGrant>,
  site: string,
  lang: string,
  scope: readonly string[],
): Map<string, EditGrant> {
  const before = grants.get(websiteKey({ site, lang })) ?? noGrant(site, lang);
  return new Map([...grants, [websiteKey(before), { ...before, scope }]]);
}

const sameNodes = (one: readonly string[], other: readonly string[]): boolean =>
  [...one].sort().join() === [...other].sort().join();

const isSame = (one: EditGrant, other: EditGrant): boolean =>
  flagsOf(one.tasks) === flagsOf(other.tasks) && (one.tasks.size === 0 || sameNodes(one.scope, other.scope));

export function changedGrants(
  before: ReadonlyMap<string, EditGrant>,
  after: ReadonlyMap<string, EditGrant>,
): EditGrant[] {
  return [...after.values()].filter((grant) => {
    const was = before.get(websiteKey(grant)) ?? noGrant(grant.site, grant.lang);
    return !isSame(was, grant);
  });
}

/** Changes on top of what is there. */
export const withGrants = (
  grants: ReadonlyMap<string, EditGrant>,
  changes: readonly EditGrant[],
): Map<string, EditGrant> =>
  new Map([...grants, ...changes.map((grant): [string, EditGrant] => [websiteKey(grant), grant])]);

/** A set of nodes with one more or less: what lies below a chosen node needs no choice of its own. */
export function flippedNode(scope: readonly string[], node: string): string[] {
  if (scope.includes(node)) return scope.filter((one) => one !== node);
  return [...scope.filter((one) => !one.startsWith(`${node}.`)), node].sort();
}

/** The chosen node above this one, or "". */
export const chosenAbove = (scope: readonly string[], node: string): string =>
  scope.find((one) => node.startsWith(`${one}.`)) ?? "";

// ---- The administration ----

export type Access = "view" | "edit";

/** What a role may open in one place; an empty site or language means all of them. */
export interface EntryGrant {
  readonly entry: number;
  readonly site: string;
  readonly lang: string;
  readonly view: boolean;
  readonly edit: boolean;
}

export interface EntryRow {
  readonly entry: number;
  readonly site: string;
  readonly lang: string;
  readonly view: number;
  readonly edit: number;
}

export interface Where {
  readonly site: string;
  readonly lang: string;
}

export const entryKey = ({ entry, site, lang }: { entry: number } & Where): string => `${entry}|${site}|${lang}`;

export const entryGrants = (rows: readonly EntryRow[]): Map<string, EntryGrant> =>
  new Map(
    rows
      .filter((row) => row.view === 1 || row.edit === 1)
      .map((row) => [entryKey(row), { ...row, view: row.view === 1, edit: row.edit === 1 }]),
  );

export const entryGrantAt = (grants: ReadonlyMap<string, EntryGrant>, entry: number, where: Where): EntryGrant =>
  grants.get(entryKey({ entry, ...where })) ?? { entry, ...where, view: false, edit: false };

export function withAccess(
  grants: ReadonlyMap<string, EntryGrant>,
  entry: number,
  where: Where,
  access: Access,
  has: boolean,
): Map<string, EntryGrant> {
  const grant = { ...entryGrantAt(grants, entry, where), [access]: has };
  return new Map([...grants, [entryKey(grant), grant]]);
}

/** Whether a row for more places gives it already. */
export function givenWider(
  grants: ReadonlyMap<string, EntryGrant>,
  entry: number,
  where: Where,
  access: Access,
): boolean {
  return [...grants.values()].some(
    (grant) =>
      grant.entry === entry &&
      grant[access] &&
      (grant.site !== where.site || grant.lang !== where.lang) &&
      ["", where.site].includes(grant.site) &&
      ["", where.lang].includes(grant.lang),
  );
}

/** Changes on top of what is there. */
export const withEntries = (
  grants: ReadonlyMap<string, EntryGrant>,
  changes: readonly EntryGrant[],
): Map<string, EntryGrant> =>
  new Map([...grants, ...changes.map((grant): [string, EntryGrant] => [entryKey(grant), grant])]);

export function changedEntries(
  before: ReadonlyMap<string, EntryGrant>,
  after: ReadonlyMap<string, EntryGrant>,
): EntryGrant[] {
  return [...after.values()].filter((grant) => {
    const was = entryGrantAt(before, grant.entry, grant);
    return was.view !== grant.view || was.edit !== grant.edit;
  });
}

/** Whether an entry of a level can be given in a place. */
export function fits(level: number, { site, lang }: Where): boolean {
  if (lang !== "") return level >= 2;
  return site === "" || level >= 1;
}

// ---- Whom a change hits ----

export interface EditHit {
  readonly loginId: number;
  readonly name: string;
  readonly task: Task;
  readonly now: number;
  readonly afterwards: number;
}

export interface EntryHit {
  readonly loginId: number;
  readonly name: string;
  readonly access: Access;
  readonly now: number;
  readonly afterwards: number;
}

/** What a change takes from people, or gives them: a task in a website, or access to an entry. */
export interface Hit {
  readonly taken: boolean;
  /** Of a page's task. */
  readonly task?: Task;
  readonly website?: string;
  /** Of an entry. */
  readonly access?: Access;
  readonly entry?: number;
  readonly people: readonly { readonly loginId: number; readonly name: string; readonly pages: number }[];
}

type Mutable = { -readonly [K in keyof Hit]: Hit[K] } & { people: { loginId: number; name: string; pages: number }[] };

function gather(hits: Mutable[], like: Omit<Hit, "people">, person: Mutable["people"][number]): void {
  const same = hits.find(
    (hit) =>
      hit.taken === like.taken &&
      hit.task === like.task &&
      hit.website === like.website &&
      hit.access === like.access &&
      hit.entry === like.entry,
  );
  if (same) same.people.push(person);
  else hits.push({ ...like, people: [person] });
}

/** One sentence for each thing that is taken or given; what is taken comes first. */
export function hitsOf(
  pages: readonly { grant: EditGrant; hits: readonly EditHit[] }[],
  entries: readonly { grant: EntryGrant; hits: readonly EntryHit[] }[],
): Hit[] {
  const found: Mutable[] = [];
  for (const { grant, hits } of pages)
    for (const { loginId, name, task, now, afterwards } of hits)
      gather(
        found,
        { taken: afterwards < now, task, website: websiteKey(grant) },
        { loginId, name, pages: Math.abs(afterwards - now) },
      );
  for (const { grant, hits } of entries)
    for (const { loginId, name, access, now, afterwards } of hits)
      gather(found, { taken: afterwards < now, access, entry: grant.entry }, { loginId, name, pages: 0 });
  return [...found.filter((hit) => hit.taken), ...found.filter((hit) => !hit.taken)];
}

export const takesFrom = (hits: readonly Hit[], loginId: number): Hit[] =>
  hits.filter((hit) => hit.taken && hit.people.some((person) => person.loginId === loginId));
