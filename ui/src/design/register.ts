/** Puts the screens of what websites are drawn with into the shell. */

import { html } from "lit";
import { keyed } from "lit/directives/keyed.js";
import { word } from "../pages/words";
import { screens } from "../shell/registry";
import { ASSETS } from "./data";
import { FORMS } from "./forms";

screens.register(
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
