import { html } from "lit";
import { L, t } from "../labels";
import { sides } from "../shell/registry";

sides.register({
  id: "pages",
  order: 10,
  label: () => t(L.pages),
  icon: "list-tree",
  load: async () => {
    await import("./tvx-pages");
    (await import("./tree-data")).startTree();
    void import("./moves").then(({ startMoves }) => startMoves());
  },
  render: () => html`<tvx-pages></tvx-pages>`,
});
