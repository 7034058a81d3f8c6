/** Puts the screens of the modules into the shell. */

import { html } from "lit";
import { L, t } from "../labels";
import { screens } from "../shell/registry";
import { FORUM } from "./forum-data";

screens.register(
  {
    path: "/torvex/torvex_forum/forums.asp",
    title: () => t(L.forums),
    load: () => import("./tvx-forums"),
    render: ({ params }) => html`<tvx-forums .params=${params}></tvx-forums>`,
  },
  {
    path: "/torvex/torvex_forum/topics.asp",
    entry: FORUM,
    title: () => t(L.forumTopics),
    load: () => import("./tvx-forum-topics"),
    render: ({ params }) => html`<tvx-forum-topics .params=${params}></tvx-forum-topics>`,
  },
  {
    path: "/torvex/torvex_forum/reactions.asp",
    entry: FORUM,
    title: () => t(L.forumTopics),
    load: () => import("./tvx-forum-thread"),
    render: ({ params }) => html`<tvx-forum-thread .params=${params}></tvx-forum-thread>`,
  },
);

screens.register({
  path: "/torvex/torvex_msgboard/categories.asp",
  title: () => t(L.messageBoard),
  load: () => import("./tvx-board"),
  render: ({ params }) => html`<tvx-board .params=${params}></tvx-board>`,
});

screens.register(
  {
    path: "/torvex/torvex_newsflash/newsflashes.asp",
    title: () => t(L.newsflashes),
    load: () => import("./tvx-newsflashes"),
    render: ({ params }) => html`<tvx-newsflashes .params=${params}></tvx-newsflashes>`,
  },
  {
    path: "/torvex/torvex_dynmenu/menus.asp",
    title: () => t(L.dynamicMenus),
    load: () => import("./tvx-menus"),
    render: ({ params }) => html`<tvx-menus .params=${params}></tvx-menus>`,
  },
  {
    path: "/torvex/torvex_search/search.asp",
    title: () => t(L.siteSearch),
    load: () => import("./tvx-site-search"),
    render: ({ params }) => html`<tvx-site-search .params=${params}></tvx-site-search>`,
  },
  {
    path: "/torvex/torvex_search/catalogue.asp",
    title: () => t(L.searchCatalogueTitle),
    load: () => import("./tvx-catalogue"),
    render: ({ params }) => html`<tvx-catalogue .params=${params}></tvx-catalogue>`,
  },
);
