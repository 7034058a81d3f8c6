/** What the screens of running the system ask of the server. */

import { Batch, call } from "../api";
import type { Word } from "./model/words";

// ---- Settings ----

export interface Setting {
  readonly parameter: string;
  /** What it means, in the words of its reader; "" where nobody knows. */
  readonly meaning: string;
  readonly section: string;
  /** "B", "N" or "C". */
  readonly dataType: string;
  readonly content: string;
  readonly usual: string | null;
  readonly isUsual: number;
  readonly takes: "now" | "session" | "file" | "unused";
}

export interface Settings {
  readonly loginId: number;
  readonly settings: readonly Setting[];
  /** As it came: what a save expects to find again. */
  readonly expected: unknown;
}

export async function settingsOf(loginId: number): Promise<Settings> {
  const batch = new Batch();
  const settings = batch.do("desk.getSettings", { loginId });
  await batch.run();
  return { loginId, settings: settings.value as unknown as Setting[], expected: settings.raw };
}

/** Saves what has been changed, by parameter, unless somebody has changed the settings meanwhile. */
export function saveSettings(
  { loginId, settings, expected }: Settings,
  changes: ReadonlyMap<string, string>,
): Promise<void> {
  const batch = new Batch();
  batch.do("desk.getSettings", { loginId }, { expect: { is: expected } });
  for (const { parameter, dataType } of settings) {
    const value = changes.get(parameter);
    if (value !== undefined) batch.do("cManager.updateParam", { loginId, parameter, value, dataType });
  }
  return batch.run();
}

// ---- Interface languages ----

export interface InterfaceLanguage {
  readonly lang_ID: string;
  readonly lang_name: string;
  readonly lang_enabled: number;
  readonly lang_default: number;
}

export const interfacesOf = (): Promise<InterfaceLanguage[]> =>
  call("cManager.getInterfaceLanguages", {}) as Promise<InterfaceLanguage[]>;

export const addInterface = (langId: string, name: string): Promise<unknown> =>
  call("registers.addInterface", { langId, name });

// ---- Words ----

export interface Words {
  readonly langId: string;
  readonly words: readonly Word[];
  /** As they came: what a save of many expects to find again. */
  readonly expected: unknown;
}

export async function wordsOf(langId: string): Promise<Words> {
  const batch = new Batch();
  const words = batch.do("registers.getWords", { langId });
  await batch.run();
  return { langId, words: words.value, expected: words.raw };
}

/** Saves one word unless somebody has changed it meanwhile. */
export function saveWord(langId: string, { label, word }: Word, text: string): Promise<void> {
  const batch = new Batch();
  batch.do("cManager.getVocab", { langId, labelId: label }, { expect: { is: word } });
  batch.do("cManager.saveVocab", { langId, labelId: label, text });
  return batch.run();
}

/** Saves many, unless any word of the language has been changed meanwhile. */
export async function saveWords({ langId, expected }: Words, tables: readonly string[]): Promise<void> {
  for (const [at, words] of tables.entries()) {
    const batch = new Batch();
    if (at === 0) batch.do("registers.getWords", { langId }, { expect: { is: expected } });
    batch.do("registers.saveWords", { langId, words });
    await batch.run();
  }
}

// ---- Servers ----

export interface ServerLine {
  readonly serverId: number;
  readonly serverName: string;
  readonly serverDescription: string;
  readonly serverIP: string;
}

export interface Missed {
  readonly server: string;
  readonly path: string;
  readonly task: string;
  readonly reason: string;
  readonly moment: string | null;
}

export interface Servers {
  readonly servers: readonly ServerLine[];
  readonly missed: readonly Missed[];
  /** This machine. */
  readonly own: string;
  readonly expected: unknown;
}

export async function serversOf(): Promise<Servers> {
  const batch = new Batch();
  const list = batch.do("cManager.getServerList", {});
  const missed = batch.do("desk.getReplication", {});
  const own = batch.do("cManager.getServerName", {});
  await batch.run();
  return { servers: list.value, missed: missed.value, own: own.value, expected: list.raw };
}

const ofServer = ({ serverId, serverName, serverDescription, serverIP }: ServerLine) => ({
  serverId,
  name: serverName,
  description: serverDescription,
  address: serverIP,
});

export function saveServer(expected: unknown, server: ServerLine): Promise<void> {
  const batch = new Batch();
  batch.do("cManager.getServerList", {}, { expect: { is: expected } });
  batch.do("registers.saveServer", ofServer(server));
  return batch.run();
}

export const addServer = (server: ServerLine): Promise<unknown> => call("registers.saveServer", ofServer(server));

// ---- Groups and users ----

export const GROUPS = 31;
export const USERS = 32;

export interface Group {
  readonly groupId: number;
  readonly name: string;
  readonly description: string;
  readonly entryPage: number;
  readonly entryTitle: string;
  readonly exitPage: number;
  readonly exitTitle: string;
  readonly users: number;
  readonly pages: number;
  readonly folders: number;
}

export const groupsOf = (): Promise<Group[]> => call("registers.getGroups", {}) as Promise<Group[]>;

/** What of a group is written. */
export interface GroupFields {
  readonly name: string;
  readonly description: string;
  readonly entryPage: string;
  readonly exitPage: string;
}

export interface GroupRecord {
  readonly group: Group;
  readonly expected: unknown;
}

const noGroup: Group = {
  groupId: 0,
  name: "",
  description: "",
  entryPage: -1,
  entryTitle: "",
  exitPage: -1,
  exitTitle: "",
  users: 0,
  pages: 0,
  folders: 0,
};

export async function groupOf(groupId: number): Promise<GroupRecord> {
  const batch = new Batch();
  const all = batch.do("registers.getGroups", {});
  await batch.run();
  return { group: all.value.find((one) => one.groupId === groupId) ?? noGroup, expected: all.raw };
}

export function saveGroup({ group, expected }: GroupRecord, fields: GroupFields): Promise<void> {
  const batch = new Batch();
  batch.do("registers.getGroups", {}, { expect: { is: expected } });
  batch.do("registers.saveGroup", { groupId: group.groupId, ...fields });
  return batch.run();
}

export const addGroup = (name: string, description: string): Promise<unknown> =>
  call("registers.saveGroup", { groupId: 0, name, description, entryPage: "", exitPage: "" });

export const removeGroup = (groupId: number): Promise<unknown> => call("cManager.deleteGroup", { groupId });

export interface User {
  readonly userId: number;
  readonly username: string;
  readonly firstname: string;
  readonly lastname: string;
  readonly validFrom: string;
  readonly validTo: string;
  readonly userGroups: number;
}

export const usersOf = (words: string, groupId: number, from: number): Promise<User[]> =>
  call("registers.getUsers", { words, groupId, from }) as Promise<User[]>;

export interface UserGroup {
  readonly groupId: number;
  readonly name: string;
  readonly member: number;
}

/** The second factor of an account, if it has one. */
export interface UserFactor {
  readonly since: string | null;
  readonly codesLeft: number;
}

export interface UserRecord {
  readonly user: User;
  readonly groups: readonly UserGroup[];
  readonly factor: UserFactor | undefined;
  readonly expected: unknown;
}

/** What of a user is written; an empty password stays. */
export type UserFields = Pick<User, "username" | "firstname" | "lastname" | "validFrom" | "validTo">;

const noUser: User = {
  userId: 0,
  username: "",
  firstname: "",
  lastname: "",
  validFrom: "",
  validTo: "",
  userGroups: 0,
};

export async function userOf(userId: number): Promise<UserRecord> {
  const batch = new Batch();
  const user = batch.do("registers.getUser", { userId });
  const groups = batch.do("cManager.getUserGroups", { userId });
  const factor = batch.do("registers.getUserFactor", { userId });
  await batch.run();
  const { firstname, lastname, validFrom, validTo, ...others } = user.value[0] ?? noUser;
  return {
    // What was never written is null.
    user: {
      ...others,
      firstname: firstname ?? "",
      lastname: lastname ?? "",
      validFrom: validFrom ?? "",
      validTo: validTo ?? "",
    },
    groups: groups.value,
    factor: factor.value[0],
    expected: user.raw,
  };
}

export const userGroupsOf = (userId: number): Promise<UserGroup[]> =>
  call("cManager.getUserGroups", { userId }) as Promise<UserGroup[]>;

export async function userFactorOf(userId: number): Promise<UserFactor | undefined> {
  const [factor] = (await call("registers.getUserFactor", { userId })) as UserFactor[];
  return factor;
}

export const resetUserFactor = (userId: number): Promise<unknown> => call("registers.resetUserFactor", { userId });

export function saveUser({ user, expected }: UserRecord, fields: UserFields, password: string): Promise<void> {
  const batch = new Batch();
  batch.do("registers.getUser", { userId: user.userId }, { expect: { is: expected } });
  batch.do("registers.saveUser", { userId: user.userId, ...fields, password });
  return batch.run();
}

export const addUser = (fields: UserFields, password: string): Promise<unknown> =>
  call("registers.saveUser", { userId: 0, ...fields, password });

export const removeUser = (userId: number): Promise<unknown> => call("cManager.deleteUser", { userId });

export const setUserGroup = (userId: number, groupId: number, has: boolean): Promise<unknown> =>
  call("registers.setUserGroup", { userId, groupId, has });

export interface ImportLine {
  readonly line: number;
  readonly username: string;
  readonly outcome: "adds" | "changes" | "same" | "bad";
  readonly detail: string;
}

export const importUsers = (table: string, dryRun: boolean): Promise<ImportLine[]> =>
  call("registers.importUsers", { table, dryRun }) as Promise<ImportLine[]>;
