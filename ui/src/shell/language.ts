import { call } from "../api";
import { Store } from "../kit/store";
import { loadWords } from "../labels";

// What was chosen here, and over which language of the document: who logs in with another one means that.
const key = "torvex.language";
const given = () => document.documentElement.dataset.given ?? document.documentElement.lang;

export function wishedLanguage(): string {
  document.documentElement.dataset.given = document.documentElement.lang;
  const [chosen, over] = (localStorage.getItem(key) ?? "").split(" ");
  return chosen && over === given() ? chosen : given() || "en";
}

/** The interface in another language, at once. */
export async function useLanguage(lang: string): Promise<void> {
  await loadWords(lang);
  localStorage.setItem(key, `${lang} ${given()}`);
}

/** The languages that can be chosen: codes and names. */
export const languages = new Store<readonly (readonly [string, string])[]>([
  ["en", "English"],
  ["de", "Deutsch"],
]);

export async function readLanguages(): Promise<void> {
  try {
    const all = await call("cManager.getInterfaceLanguages", {});
    const on = all.filter(({ lang_enabled }) => lang_enabled === 1);
    languages.value = on.map(({ lang_ID, lang_name }) => [lang_ID ?? "", lang_name ?? ""] as const);
  } catch {
    // Those that each installation has stay on offer.
  }
}
