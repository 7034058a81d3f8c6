import { interfaceLanguage } from ".";

const signs: Record<string, string> = {
  ArrowUp: "↑",
  ArrowDown: "↓",
  ArrowLeft: "←",
  ArrowRight: "→",
  Insert: "Ins",
  Delete: "Del",
  Escape: "Esc",
};
const german: Record<string, string> = {
  Ctrl: "Strg",
  Shift: "Umschalt",
  Insert: "Einfg",
  Delete: "Entf",
  Enter: "Eingabe",
  Space: "Leertaste",
};

const one = (key: string) => (interfaceLanguage() === "de" ? german[key] : undefined) ?? signs[key] ?? key;

/** A key as it stands on the keyboards of the language: "Strg+Umschalt+H". */
export const shownKey = (key: string) => key.split("+").map(one).join("+");
