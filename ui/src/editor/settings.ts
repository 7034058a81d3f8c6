// Which groups of tools a site's administrators leave to its authors.
import { Store } from "../kit/store";

export interface Groups {
  styles: boolean;
  headings: boolean;
  fontname: boolean;
  fontsize: boolean;
  fontcolor: boolean;
  backcolor: boolean;
}

export const groups = new Store<Groups>({
  styles: true,
  headings: true,
  fontname: true,
  fontsize: true,
  fontcolor: true,
  backcolor: true,
});

let asked: Promise<void> | undefined;

/** Asks the server once; what it doesn't say is allowed. */
export function loadGroups(): Promise<void> {
  asked ??= fetch("/torvex/api/session", { credentials: "same-origin", headers: { Accept: "application/json" } })
    .then((response) => response.json())
    .then(({ editor }: { editor?: Partial<Groups> }) => groups.patch(editor ?? {}))
    .catch(() => {
      asked = undefined;
    });
  return asked;
}
