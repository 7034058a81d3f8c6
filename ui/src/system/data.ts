/** What the screens of running the system ask of the server. */

import { call } from "../api";
import { type Entry, run, type Step, step } from "../records/batch";

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

interface Grid {
  readonly columns?: readonly { readonly name: string }[];
  readonly rows?: readonly (readonly unknown[])[];
}

const linesOf = (result: unknown): Setting[] => {
  const { columns = [], rows = [] } = (result ?? {}) as Grid;
  return rows.map((row) => Object.fromEntries(columns.map(({ name }, at) => [name, row[at]])) as unknown as Setting);
};

export async function settingsOf(loginId: number): Promise<Settings> {
  const [entry] = await run([step("desk.getSettings", { loginId })], "read");
  return { loginId, settings: linesOf(entry?.result), expected: entry?.result };
}

/** Saves what has been changed, by parameter, unless somebody has changed the settings meanwhile. */
export function saveSettings(
  { loginId, settings, expected }: Settings,
  changes: ReadonlyMap<string, string>,
): Promise<Entry[]> {
  const steps: Step[] = [step("desk.getSettings", { loginId }, { expect: { is: expected } })];
  for (const { parameter, dataType } of settings) {
    const value = changes.get(parameter);
    if (value !== undefined) steps.push(step("cManager.updateParam", { loginId, parameter, value, dataType }));
  }
  return run(steps, "write");
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
