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
