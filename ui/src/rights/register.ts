/** Puts the screens of logins and roles into the shell. */

import { html } from "lit";
import { L, t } from "../labels";
import { screens } from "../shell/registry";

screens.register(
  {
    path: "/torvex/roles.asp",
    title: () => t(L.rolesAndRights),
    load: () => import("./tvx-roles"),
    render: ({ params }) => html`<tvx-roles .params=${params}></tvx-roles>`,
  },
  {
    path: "/torvex/logins.asp",
    title: () => t(L.logins),
    load: () => import("./tvx-logins"),
    render: ({ params }) => html`<tvx-logins .params=${params}></tvx-logins>`,
  },
);
