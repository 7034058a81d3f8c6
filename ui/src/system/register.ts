/** Puts the screens of running the system into the shell. */

import { html } from "lit";
import { L, t } from "../labels";
import { go } from "../shell/address";
import { actions, screens } from "../shell/registry";
import { maySee } from "../shell/workplace";

const STATISTICS = 213;

screens.register(
  {
    path: "/torvex/audittrail.asp",
    title: () => t(L.auditTrail),
    load: () => import("./tvx-audit-trail"),
    render: ({ params }) => html`<tvx-audit-trail .params=${params}></tvx-audit-trail>`,
  },
  {
    path: "/torvex/statistics.asp",
    title: () => t(L.statistics),
    load: () => import("./tvx-statistics"),
    render: ({ params }) => html`<tvx-statistics .params=${params}></tvx-statistics>`,
  },
  {
    path: "/torvex/settings.asp",
    title: () => t(L.settings),
    load: () => import("./tvx-settings"),
    render: ({ params }) => html`<tvx-settings .params=${params}></tvx-settings>`,
  },
  {
    path: "/torvex/mysettings.asp",
    title: () => t(L.mySettings),
    load: () => import("./tvx-my-settings"),
    render: () => html`<tvx-my-settings></tvx-my-settings>`,
  },
);

actions.register({
  id: "statistics",
  order: 150,
  label: () => t(L.statistics),
  icon: "chart-column",
  when: ({ site, lang }) => maySee(STATISTICS, site, lang),
  run: ({ pageId }) => go(`/torvex/statistics.asp?pageId=${pageId}`),
});
