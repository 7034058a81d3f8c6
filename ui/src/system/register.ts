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
  {
    path: "/torvex/interfacelanguages.asp",
    title: () => t(L.interfaceLanguages),
    load: () => import("./tvx-interfaces"),
    render: () => html`<tvx-interfaces></tvx-interfaces>`,
  },
  {
    path: "/torvex/vocabulary.asp",
    title: () => t(L.vocabulary),
    load: () => import("./tvx-vocabulary"),
    render: ({ params }) => html`<tvx-vocabulary .params=${params}></tvx-vocabulary>`,
  },
  {
    path: "/torvex/servers.asp",
    title: () => t(L.servers),
    load: () => import("./tvx-servers"),
    render: ({ params }) => html`<tvx-servers .params=${params}></tvx-servers>`,
  },
  {
    path: "/torvex/groups.asp",
    title: () => t(L.groups),
    load: () => import("./tvx-groups"),
    render: ({ params }) => html`<tvx-groups .params=${params}></tvx-groups>`,
  },
  {
    path: "/torvex/users.asp",
    title: () => t(L.users),
    load: () => import("./tvx-users"),
    render: ({ params }) => html`<tvx-users .params=${params}></tvx-users>`,
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
