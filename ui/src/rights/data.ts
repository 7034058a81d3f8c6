/** Roles, their rights and their logins, as they come from the server and go there. */

import { Batch, call } from "../api";
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
  readonly secondFactor: number;
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
  readonly demandsFactor: boolean;
  readonly expected: readonly unknown[];
}

export const rolesOf = (): Promise<RoleLine[]> => call("registers.getRoles", {}) as Promise<RoleLine[]>;

export async function roleOf(roleId: number): Promise<Role> {
  const work = new Batch();
  const name = work.do("cManager.getRoleName", { roleId });
  const description = work.do("cManager.getRoleDescription", { roleId });
  const editRights = work.do("registers.getEditRights", { roleId });
  const access = work.do("registers.getAdvancedRights", { roleId });
  const logins = work.do("registers.getRoleLogins", { roleId });
  const roles = work.do("registers.getRoles", {});
  await work.run();
  return {
    roleId,
    demandsFactor: roles.value.some((role) => role.roleId === roleId && role.secondFactor === 1),
    name: name.value,
    description: description.value,
    grants: editGrants(editRights.value as EditRow[]),
    entries: entryGrants(access.value as EntryRow[]),
    logins: logins.value as RoleLogin[],
    expected: [name, description, editRights, access].map(({ raw }) => raw),
  };
}

/** The calls behind these go only as long as the role is as it was read. */
function expectRole(work: Batch, { roleId, expected }: Role): void {
  const [name, description, editRights, access] = expected.map((is) => ({ expect: { is } }));
  work.do("cManager.getRoleName", { roleId }, name);
  work.do("cManager.getRoleDescription", { roleId }, description);
  work.do("registers.getEditRights", { roleId }, editRights);
  work.do("registers.getAdvancedRights", { roleId }, access);
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
  const work = new Batch();
  const websites = work.do("cManager.getWebsites", {});
  const entries = work.do("cManager.getAdvList", {});
  const mayAssign = work.do("cManager.checkAdvRights", { flag: "edit", advId: LOGINS });
  await work.run();
  return {
    websites: websites.value as Website[],
    entries: (entries.value as AdminEntry[]).sort(
      (a, b) => a.advLevel - b.advLevel || a.advReference.localeCompare(b.advReference),
    ),
    mayAssign: mayAssign.value,
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
export async function saveRole(role: Role, change: RoleChange): Promise<void> {
  const { roleId } = role;
  const work = new Batch();
  expectRole(work, role);
  for (const grant of change.grants) work.do("registers.setEditRights", ofGrant(roleId, grant));
  for (const grant of change.entries) work.do("registers.setAdvancedRight", ofEntry(roleId, grant));
  work.do("registers.saveRole", { roleId, name: change.name, description: change.description });
  await work.run();
}

export const addRole = (name: string, description: string): Promise<unknown> =>
  call("registers.saveRole", { roleId: 0, name, description });

/** Whom a change would hit. */
export async function weigh(
  roleId: number,
  grants: readonly EditGrant[],
  access: readonly EntryGrant[],
): Promise<Hit[]> {
  const work = new Batch();
  const edits = grants.map((grant) => ({ grant, step: work.do("registers.weighEditRights", ofGrant(roleId, grant)) }));
  const entries = access.map((grant) => ({
    grant,
    step: work.do("registers.weighAdvancedRight", ofEntry(roleId, grant)),
  }));
  await work.run();
  return hitsOf(
    edits.map(({ grant, step }) => ({ grant, hits: step.value as EditHit[] })),
    entries.map(({ grant, step }) => ({ grant, hits: step.value as EntryHit[] })),
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
  const work = new Batch();
  const steps = nodes.map((nodeId) => work.do("cManager.getPageId", { nodeId }));
  await work.run();
  return nodes.filter((_, at) => !(Number(steps[at]?.value) > 0));
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
  readonly secondFactor: number;
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
  readonly isProgram: boolean;
  readonly hasFactor: boolean;
}

export async function loginOf(loginId: number): Promise<LoginRecord> {
  const work = new Batch();
  work.do("cManager.getLoginDetails", { loginId });
  const details = work.get("cManager", ...DETAILS);
  const roles = work.do("cManager.getLoginRoles", { loginId });
  const all = work.do("registers.getLogins", {});
  await work.run();
  const line = all.value.find((login) => login.loginId === loginId);
  const isProgram = line?.isProgram === 1;
  const hasFactor = line?.secondFactor === 1;
  return { loginId, details: details.value, roles: roles.value as HeldRole[], isProgram, hasFactor };
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

export async function saveLogin(was: LoginRecord, details: Details, password = ""): Promise<void> {
  const { loginId } = was;
  const work = new Batch();
  work.do("cManager.getLoginDetails", { loginId });
  work.expect("cManager", was.details);
  work.do("cManager.saveLogin", ofDetails(loginId, details, password));
  await work.run();
}

export const addLogin = (details: Details, password: string): Promise<unknown> =>
  call("cManager.saveLogin", ofDetails(0, details, password));

export const setProgram = (loginId: number, isProgram: boolean): Promise<unknown> =>
  call("desk.setProgram", { loginId, isProgram });

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
