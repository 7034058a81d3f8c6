/** Puts the screens of sites, languages and titles into the shell. */

import { html } from "lit";
import { L, type Label } from "../labels";
import { word } from "../pages/words";
import { screens } from "../shell/registry";

const screen = (name: string, subject: string, title: Label) => ({
  path: `/torvex/${name}.asp`,
  title: () => word(title),
  load: () => import("./tvx-websites"),
  render: () => html`<tvx-websites subject=${subject}></tvx-websites>`,
});

screens.register(
  screen("sites", "sites", L.sites),
  screen("languages", "languages", L.languages),
  screen("websitetitle", "titles", L.websiteTitle),
);
