import { Store } from "../kit/store";

export type Appearance = "system" | "light" | "dark";

const key = "torvex.appearance";
const read = () => (localStorage.getItem(key) ?? "system") as Appearance;

export const appearance = new Store<Appearance>(typeof localStorage === "undefined" ? "system" : read());

function show(wanted: Appearance): void {
  if (wanted === "system") delete document.documentElement.dataset.appearance;
  else document.documentElement.dataset.appearance = wanted;
}

export function startAppearance(): void {
  show(appearance.value);
  appearance.watch((wanted) => {
    localStorage.setItem(key, wanted);
    show(wanted);
  });
  window.addEventListener("storage", (event) => {
    if (event.key === key) appearance.value = read();
  });
}
