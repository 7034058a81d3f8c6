/** Puts the screens of what websites are drawn with into the shell. */

import { html } from "lit";
import { keyed } from "lit/directives/keyed.js";
import { L, t } from "../labels";
import { word } from "../pages/words";
import { screens } from "../shell/registry";
import { ASSETS } from "./data";
import { FORMS } from "./forms";

screens.register(
  {
    path: "/torvex/metadata.asp",
    title: () => t(L.metaTags),
    load: () => import("./tvx-metadata"),
    render: ({ params }) => html`<tvx-metadata .params=${params}></tvx-metadata>`,
  },
  ...ASSETS.map((assets) => ({
    path: assets.address.toLowerCase(),
    title: () => word(assets.title),
    load: () => import("./tvx-assets"),
    render: ({ params }: { params: URLSearchParams }) =>
      html`${keyed(assets.kind, html`<tvx-assets .assets=${assets} .params=${params}></tvx-assets>`)}`,
  })),
  ...FORMS.map((form) => ({
    path: form.address.toLowerCase(),
    title: () => word(form.title),
    load: () => import("./tvx-forms"),
    render: ({ params }: { params: URLSearchParams }) =>
      html`${keyed(form.item, html`<tvx-forms .form=${form} .params=${params}></tvx-forms>`)}`,
  })),
);
