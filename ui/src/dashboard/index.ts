import { html } from "lit";
import { L, t } from "../labels";
import { go } from "../shell/address";
import { commands, screens } from "../shell/registry";

screens.register({
  path: /^\/torvex\/(default\.asp)?$/,
  title: () => t(L.dashboard),
  load: () => import("./tvx-dashboard"),
  render: () => html`<tvx-dashboard></tvx-dashboard>`,
});

commands.register({
  id: "dashboard",
  order: 10,
  label: () => t(L.toTheDashboard),
  icon: "layout-dashboard",
  run: () => go("/torvex/"),
});
