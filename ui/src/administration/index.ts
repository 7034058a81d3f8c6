import { html } from "lit";
import { L, t } from "../labels";
import { sides } from "../shell/registry";

sides.register({
  id: "administration",
  order: 30,
  label: () => t(L.administration),
  icon: "settings",
  load: () => import("./tvx-administration"),
  render: () => html`<tvx-administration></tvx-administration>`,
});
