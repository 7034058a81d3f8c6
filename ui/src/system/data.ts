/** What the screens of running the system ask of the server. */

import { Batch, call } from "../api";

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
