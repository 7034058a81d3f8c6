/** Puts the media library into the shell. */

import { html, nothing } from "lit";
import { L, t } from "../labels";
import { footNotes, screens, sides } from "../shell/registry";
import { workplace } from "../shell/workplace";
import "./upload-note";

const screen = (kind: "images" | "documents", title: () => string) => ({
  path: `/torvex/${kind}.asp`,
  title,
  load: () => import("./tvx-media"),
  render: ({ params }: { params: URLSearchParams }) =>
    html`<tvx-media kind=${kind} .folder=${params.get("folder") ?? ""} .site=${params.get("site") || workplace.value.site} .file=${params.get("file") ?? ""}></tvx-media>`,
});

screens.register(
  screen("images", () => t(L.images)),
  screen("documents", () => t(L.documents)),
);

sides.register({
  id: "media",
  order: 20,
  label: () => t(L.mediaPlace),
  icon: "images",
  load: () => import("./tvx-media-side"),
  render: () => html`<tvx-media-side></tvx-media-side>`,
});

footNotes.register({
  id: "uploads",
  order: 30,
  render: () => (workplace.value.login ? html`<tvx-upload-note></tvx-upload-note>` : html`${nothing}`),
});
