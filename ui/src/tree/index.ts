import { html } from "lit";
import { whenIdle } from "../kit/idle";
import { L, t } from "../labels";
import { sides } from "../shell/registry";
import { startTree } from "./tree-data";

const drawing = () => import("./tvx-pages");

// It comes while the server is asked who is here: most see the tree first.
drawing().catch(() => {});

sides.register({
  id: "pages",
  order: 10,
  label: () => t(L.pages),
  icon: "list-tree",
  load: () => {
    startTree();
    whenIdle(() => import("./moves").then(({ startMoves }) => startMoves()));
    return drawing();
  },
  render: () => html`<tvx-pages></tvx-pages>`,
});
