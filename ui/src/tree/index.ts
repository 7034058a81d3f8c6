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
  },
  render: () => html`<tvx-pages></tvx-pages>`,
});
