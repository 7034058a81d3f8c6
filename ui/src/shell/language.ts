import { call } from "../api";
import { Store } from "../kit/store";
import { fetchWords, setWords } from "../labels";

// What was chosen here, and over which language of the document: who logs in with another one means that.
const key = "torvex.language";
const given = () => document.documentElement.dataset.given ?? document.documentElement.lang;

export function wishedLanguage(): string {
  document.documentElement.dataset.given = document.documentElement.lang;
  const [chosen, over] = (localStorage.getItem(key) ?? "").split(" ");
  return chosen && over === given() ? chosen : given() || "en";
}

/** The words to begin with: those of the document where those of the choice don't come. The choice stays for the next time. */
export async function startWords(): Promise<void> {
  const wished = wishedLanguage();
  const others = [...new Set([given() || "en", "en"])].filter((lang) => lang !== wished);
  for (const lang of [wished, ...others]) {
    try {
      return setWords(lang, await fetchWords(lang));
    } catch (error) {
      if (lang === (others.at(-1) ?? wished)) throw error;
    }
  }
}

let choices = 0;

/**
 * The interface in another language, at once. Nothing is changed before all of its words are there: not what is shown, not what is
 * remembered, nor what `keep` stores of the choice elsewhere. Of two choices the later one counts, whichever's words come first.
 */
export async function useLanguage(lang: string, keep: () => Promise<unknown> = async () => {}): Promise<void> {
  const choice = ++choices;
  const words = await fetchWords(lang);
  if (choice !== choices) return;
  await keep();
  if (choice !== choices) return;
  setWords(lang, words);
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
