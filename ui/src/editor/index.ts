// The editor's place in the interface. What it is made of comes when a body is opened.
import { html } from "lit";
import { L, t } from "../labels";
import { commands, panels } from "../shell/registry";
import "./tvx-page-frame";

const frame = () => document.querySelector("tvx-page-frame");

panels.register({
  id: "checks",
  order: 30,
  label: () => t(L.checks),
  icon: "list-checks",
  when: (place) => /^\/torvex\/page\.asp$/i.test(place.path),
  load: () => import("./checks/tvx-checks"),
  render: () => html`<tvx-checks></tvx-checks>`,
});

commands.register(
  {
    id: "saveBody",
    label: () => t(L.save),
    icon: "save",
    key: "Ctrl+S",
    when: () => frame()?.editing != null,
    run: () => frame()?.save(),
  },
  {
    id: "bodySource",
    label: () => t(L.source),
    icon: "code",
    when: () => frame()?.editing != null,
    run: () => frame()?.editing?.source(),
  },
);
