/** Roles, their rights and their logins, as they come from the server and go there. */

import { call } from "../api";
import { rows, run, type Step, step } from "../records/batch";
import {
  type Access,
  type EditGrant,
  type EditHit,
  type EditRow,
  type EntryGrant,
  type EntryHit,
  type EntryRow,
  editGrants,
  entryGrants,
  flagsOf,
  type Hit,
  hitsOf,
} from "./model/grants";

/** The entries of the administration that are worked with here. */
export const LOGINS = 21;
export const ROLES = 22;

// ---- Roles ----

export interface RoleLine {
  readonly roleId: number;
  readonly roleName: string;
  readonly roleDesc: string;
  readonly logins: number;
}

export interface RoleLogin {
  readonly loginId: number;
  readonly username: string;
  readonly name: string;
  readonly held: number;
}

export interface Website {
  readonly site: string;
  readonly lang: string;
  readonly siteName: string;
  readonly langName: string;
}

/** An entry of the administration. */
export interface AdminEntry {
  readonly advId: number;
  readonly advLevel: number;
  readonly advReference: string;
  readonly title: string;
  readonly advView: number;
  readonly advEdit: number;
}

/** A role as it was read: what a save expects to find again. */
export interface Role {
  readonly roleId: number;
  readonly name: string;
  readonly description: string;
  readonly grants: ReadonlyMap<string, EditGrant>;
  readonly entries: ReadonlyMap<string, EntryGrant>;
  readonly logins: readonly RoleLogin[];
  readonly expected: readonly unknown[];
}

export const rolesOf = (): Promise<RoleLine[]> => call("registers.getRoles", {}) as Promise<RoleLine[]>;

const asRead = (roleId: number, expected: readonly unknown[] = []): Step[] => {
  const names = [
    "cManager.getRoleName",
    "cManager.getRoleDescription",
    "registers.getEditRights",
    "registers.getAdvancedRights",
  ];
  return names.map((name, at) => step(name, { roleId }, expected.length ? { expect: { is: expected[at] } } : {}));
};

export async function roleOf(roleId: number): Promise<Role> {
  const entries = await run([...asRead(roleId), step("registers.getRoleLogins", { roleId })], "read");
  const [name, description, editRights, access, logins] = entries;
  return {
    roleId,
    name: String(name?.result ?? ""),
    description: String(description?.result ?? ""),
    grants: editGrants(rows<EditRow>(editRights)),
    entries: entryGrants(rows<EntryRow>(access)),
    logins: rows<RoleLogin>(logins),
    expected: entries.slice(0, 4).map(({ result }) => result),
  };
}

export const roleLoginsOf = (roleId: number): Promise<RoleLogin[]> =>
  call("registers.getRoleLogins", { roleId }) as Promise<RoleLogin[]>;

/** What roles can be given rights in and to. */
export interface Places {
  readonly websites: readonly Website[];
  readonly entries: readonly AdminEntry[];
  /** Whether this login may give people roles. */
  readonly mayAssign: boolean;
}

export async function placesOf(): Promise<Places> {
  const [websites, entries, mayAssign] = await run(
    [
      step("cManager.getWebsites", {}),
      step("cManager.getAdvList", {}),
      step("cManager.checkAdvRights", { flag: "edit", advId: LOGINS }),
    ],
    "read",
  );
  return {
    websites: rows<Website>(websites),
    entries: rows<AdminEntry>(entries).sort(
      (a, b) => a.advLevel - b.advLevel || a.advReference.localeCompare(b.advReference),
    ),
    mayAssign: mayAssign?.result === true,
  };
}

export interface RoleChange {
  readonly name: string;
  readonly description: string;
  readonly grants: readonly EditGrant[];
  readonly entries: readonly EntryGrant[];
}

const ofGrant = (roleId: number, { site, lang, tasks, scope }: EditGrant) => ({
  roleId,
  site,
  lang,
  rights: flagsOf(tasks),
  scope: scope.join(","),
});

const ofEntry = (roleId: number, { entry, site, lang, view, edit }: EntryGrant) => ({
  roleId,
  entry,
  site,
  lang,
  view,
  edit,
});

/** Saves it unless it has been changed since it was read; rights first, and then the role is let go. */
export function saveRole(role: Role, change: RoleChange): Promise<unknown> {
  const { roleId } = role;
  return run(
    [
      ...asRead(roleId, role.expected),
      ...change.grants.map((grant) => step("registers.setEditRights", ofGrant(roleId, grant))),
      ...change.entries.map((grant) => step("registers.setAdvancedRight", ofEntry(roleId, grant))),
      step("registers.saveRole", { roleId, name: change.name, description: change.description }),
    ],
    "write",
  );
}

export const addRole = (name: string, description: string): Promise<unknown> =>
  call("registers.saveRole", { roleId: 0, name, description });

/** Whom a change would hit. */
export async function weigh(
  roleId: number,
  grants: readonly EditGrant[],
  access: readonly EntryGrant[],
): Promise<Hit[]> {
  const entries = await run(
    [
      ...grants.map((grant) => step("registers.weighEditRights", ofGrant(roleId, grant))),
      ...access.map((grant) => step("registers.weighAdvancedRight", ofEntry(roleId, grant))),
    ],
    "read",
  );
  return hitsOf(
    grants.map((grant, at) => ({ grant, hits: rows<EditHit>(entries[at]) })),
    access.map((grant, at) => ({ grant, hits: rows<EntryHit>(entries[grants.length + at]) })),
  );
}

/** Whom the end of a role would hit. */
export const weighEnd = (role: Role): Promise<Hit[]> =>
  weigh(
    role.roleId,
    [...role.grants.values()].map((grant) => ({ ...grant, tasks: new Set() })),
    [...role.entries.values()].map((grant) => ({ ...grant, view: false, edit: false })),
  );

export const removeRole = (roleId: number): Promise<unknown> => call("cManager.deleteRole", { roleId });

export const setLoginRole = (loginId: number, roleId: number, has: boolean): Promise<unknown> =>
  call("registers.setLoginRole", { loginId, roleId, has });

/** The nodes of a scope that have no page any more. */
export async function goneOf(nodes: readonly string[]): Promise<string[]> {
  const entries = await run(
    nodes.map((nodeId) => step("cManager.getPageId", { nodeId })),
    "read",
  );
  return nodes.filter((_, at) => !(Number(entries[at]?.result) > 0));
}

// ---- Logins ----

export interface LoginLine {
  readonly loginId: number;
  readonly username: string;
  readonly name: string;
  readonly job: string;
  readonly lastLogin: string | null;
  readonly isOnline: number;
  readonly validFrom: string;
  readonly validTo: string;
  readonly isProgram: number;
  readonly isStrong: number;
  readonly roles: number;
}

export const loginsOf = (): Promise<LoginLine[]> => call("registers.getLogins", {}) as Promise<LoginLine[]>;

export interface HeldRole {
  readonly roleId: number;
  readonly roleName: string;
  readonly held: number;
}

export const DETAILS = [
  "adminUsername",
  "adminFullname",
  "adminJob",
  "adminEmail",
  "adminValidFrom",
  "adminValidTo",
] as const;
export type Detail = (typeof DETAILS)[number];
export type Details = Readonly<Record<Detail, string>>;

export interface LoginRecord {
  readonly loginId: number;
  readonly details: Details;
  readonly roles: readonly HeldRole[];
}

const readDetails = (loginId: number, expected?: Details): Step[] => [
  step("cManager.getLoginDetails", { loginId }),
  { on: "cManager", get: [...DETAILS], ...(expected ? { expect: { is: expected } } : {}) },
];

export async function loginOf(loginId: number): Promise<LoginRecord> {
  const entries = await run([...readDetails(loginId), step("cManager.getLoginRoles", { loginId })], "read");
  return { loginId, details: entries[1]?.result as Details, roles: rows<HeldRole>(entries[2]) };
}

export const loginRolesOf = (loginId: number): Promise<HeldRole[]> =>
  call("cManager.getLoginRoles", { loginId }) as Promise<HeldRole[]>;

/** The parts of a login as the operation takes them; what is empty stays as it is, but for its days. */
const ofDetails = (loginId: number, details: Details, password: string) => ({
  advId: LOGINS,
  loginId,
  username: details.adminUsername,
  password,
  name: details.adminFullname,
  job: details.adminJob,
  email: details.adminEmail,
  validFrom: details.adminValidFrom,
  validTo: details.adminValidTo,
});

export function saveLogin(was: LoginRecord, details: Details, password = ""): Promise<unknown> {
  const { loginId } = was;
  return run(
    [...readDetails(loginId, was.details), step("cManager.saveLogin", ofDetails(loginId, details, password))],
    "write",
  );
}

export const addLogin = (details: Details, password: string): Promise<unknown> =>
  call("cManager.saveLogin", ofDetails(0, details, password));

export const removeLogin = (loginId: number): Promise<unknown> => call("cManager.deleteLogin", { loginId });

// ---- Why ----

export interface Question {
  readonly loginId: number;
  /** Of a page. */
  readonly action?: string;
  readonly page?: string;
  /** Of an entry. */
  readonly access?: Access;
  readonly entry?: number;
  readonly site?: string;
  readonly lang?: string;
}
