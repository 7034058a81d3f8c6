/** Puts the screens, panels and actions of pages into the shell; what draws them comes when it is needed. */

import { html } from "lit";
import { L, t } from "../labels";
import { go, pageAddress, setQuery } from "../shell/address";
import { actions, panels, screens, commands as shellCommands } from "../shell/registry";
import { currentPage, type PageState, workplace } from "../shell/workplace";
import * as commands from "./commands";
import { isRoot, isSystemRoot } from "./model/places";

screens.register(
  {
    path: "/torvex/page.asp",
    title: () => currentPage.value?.title || t(L.pageView),
    load: () => import("./page-view"),
    render: ({ params }) =>
      html`<tvx-page-view .pageIdent=${params.get("pageId") ?? ""} .look=${lookOf(params.get("look"))} .begin=${params.get("edit") ?? ""}></tvx-page-view>`,
  },
  {
    path: "/torvex/locks.asp",
    title: () => t(L.heldPages),
    load: () => import("./held-pages"),
    render: () => html`<tvx-held-pages></tvx-held-pages>`,
  },
  {
    path: "/torvex/loginsonline.asp",
    title: () => t(L.loginsOnline),
    load: () => import("./logins-online"),
    render: () => html`<tvx-logins-online></tvx-logins-online>`,
  },
  {
    path: "/torvex/search",
    title: () => t(L.search),
    load: () => import("./search-page"),
    render: ({ params }) => html`<tvx-search-page .params=${params}></tvx-search-page>`,
  },
  {
    path: "/torvex/sitemap",
    title: () => t(L.sitemap),
    load: () => import("./sitemap-page"),
    render: () => html`<tvx-sitemap></tvx-sitemap>`,
  },
);

const lookOf = (text: string | null): "design" | "live" | "compare" =>
  text === "live" || text === "compare" ? text : "design";

const isPage = (path: string): boolean => path.toLowerCase() === "/torvex/page.asp";

panels.register(
  {
    id: "setup",
    order: 10,
    label: () => t(L.setupPanel),
    icon: "sliders-horizontal",
    when: ({ path }, page) => isPage(path) && page !== null,
    load: () => import("./setup-panel"),
    render: (_, page) => html`<tvx-page-setup .page=${page}></tvx-page-setup>`,
  },
  {
    id: "status",
    order: 20,
    label: () => t(L.statusPanel),
    icon: "info",
    when: ({ path }, page) => isPage(path) && page !== null,
    load: () => import("./status-panel"),
    render: (_, page) => html`<tvx-page-status .page=${page}></tvx-page-status>`,
  },
  {
    id: "history",
    order: 40,
    label: () => t(L.historyPanel),
    icon: "history",
    when: ({ path }, page) => isPage(path) && page !== null,
    load: () => import("./history-panel"),
    render: (_, page) => html`<tvx-page-history .page=${page}></tvx-page-history>`,
  },
);

const ident = (page: PageState): string => String(page.pageId);

const noEdit = (page: PageState): string => {
  if (page.heldByOther) return t(L.isHeldFirst, { name: page.holder });
  return page.state === "approved" ? t(L.isApprovedFirst) : "";
};

const noMove = (page: PageState): string => {
  if (isRoot(page.nodeId)) return t(L.rootStays);
  return isSystemRoot(page.nodeId) ? t(L.systemStays) : "";
};

const noGo = (page: PageState): string =>
  page.heldByOther ? t(L.isHeldFirst, { name: page.holder }) : page.state === "live" ? t(L.nothingToDo) : "";

const newBelow = (page: PageState): unknown =>
  commands.newPage({ site: page.site, lang: page.lang, parent: page.nodeId });

const mayEdit = ({ rights }: PageState): boolean => rights.edit;
const mayMove = ({ rights }: PageState): boolean => rights.move;
/** To what it isn't already. */
const maySwitch =
  (to: boolean) =>
  ({ rights, on }: PageState): boolean =>
    rights.onOff && (on === undefined || on === !to);
const mayPublish = ({ rights }: PageState): boolean => rights.publish;
const any = (): boolean => true;

actions.register(
  {
    id: "page.new",
    order: 10,
    label: () => t(L.newBelow),
    icon: "file-plus",
    key: "Insert",
    when: mayEdit,
    run: newBelow,
  },
  {
    id: "page.title",
    order: 15,
    label: () => t(L.changeTitleMore),
    icon: "pencil",
    key: "F2",
    when: mayEdit,
    disabled: (page) => (page.heldByOther ? t(L.isHeldFirst, { name: page.holder }) : ""),
    run: (page) => commands.changeTitle(ident(page)),
  },
  {
    id: "page.publish",
    order: 20,
    label: () => t(L.publishMore),
    icon: "send",
    when: ({ rights }) => rights.publish || rights.approve,
    disabled: noGo,
    run: (page) => commands.publishPage(ident(page)),
  },
  {
    id: "page.branch",
    order: 21,
    label: () => t(L.publishBranchMore),
    icon: "rocket",
    when: mayPublish,
    run: (page) => commands.publishBranch(ident(page)),
  },
  {
    id: "page.copy",
    order: 30,
    label: () => t(L.copyTo),
    icon: "copy",
    when: any,
    disabled: ({ nodeId }) => (isRoot(nodeId) ? t(L.rootStays) : ""),
    run: (page) => commands.copyPages([page.nodeId]),
  },
  {
    id: "page.move",
    order: 31,
    label: () => t(L.moveTo),
    icon: "move",
    when: mayMove,
    disabled: noMove,
    run: (page) => commands.movePages([page.nodeId]),
  },
  {
    id: "page.up",
    order: 32,
    label: () => t(L.moveUp),
    icon: "arrow-up",
    key: "Alt+ArrowUp",
    when: mayMove,
    disabled: noMove,
    run: (page) => commands.stepPlace(page.nodeId, "up"),
  },
  {
    id: "page.down",
    order: 33,
    label: () => t(L.moveDown),
    icon: "arrow-down",
    key: "Alt+ArrowDown",
    when: mayMove,
    disabled: noMove,
    run: (page) => commands.stepPlace(page.nodeId, "down"),
  },
  {
    id: "page.on",
    order: 40,
    label: () => t(L.switchOn),
    icon: "power",
    when: maySwitch(true),
    run: (page) => commands.switchPage(page, true),
  },
  {
    id: "page.off",
    order: 41,
    label: () => t(L.switchOff),
    icon: "power-off",
    when: maySwitch(false),
    run: (page) => commands.switchPage(page, false),
  },
  {
    id: "page.branchOn",
    order: 42,
    label: () => t(L.switchBranchOn),
    icon: "power",
    when: maySwitch(true),
    run: (page) => commands.switchPage(page, true, true),
  },
  {
    id: "page.branchOff",
    order: 43,
    label: () => t(L.switchBranchOff),
    icon: "power-off",
    when: maySwitch(false),
    run: (page) => commands.switchPage(page, false, true),
  },
  {
    id: "page.reset",
    order: 50,
    label: () => t(L.resetMore),
    icon: "rotate-ccw",
    when: mayEdit,
    disabled: noEdit,
    run: (page) => commands.resetPage(ident(page)),
  },
  {
    id: "page.unmark",
    order: 60,
    label: () => t(L.unmark),
    icon: "undo-2",
    when: (page) => mayEdit(page) && page.state === "marked",
    disabled: noEdit,
    run: (page) => commands.markPage(page, false),
  },
  {
    id: "page.mark",
    order: 61,
    label: () => t(L.mark),
    icon: "trash-2",
    key: "Delete",
    danger: true,
    when: (page) => mayEdit(page) && page.state !== "marked",
    disabled: (page) => noEdit(page) || (isRoot(page.nodeId) ? t(L.rootStays) : ""),
    run: (page) => commands.markPage(page, true),
  },
);

const withCurrent = (run: (page: PageState) => unknown) => (): unknown =>
  currentPage.value ? run(currentPage.value) : undefined;

shellCommands.register(
  {
    id: "pages.new",
    label: () => t(L.newPageTitle),
    icon: "file-plus",
    when: () => (currentPage.value?.rights ?? workplace.value.rights).edit,
    run: () => {
      const { site, lang } = workplace.value;
      return currentPage.value
        ? newBelow(currentPage.value)
        : commands.newPage({ site, lang, parent: `${site}.${lang}` });
    },
  },
  { id: "pages.search", label: () => t(L.searchAll), icon: "search", run: () => go("/torvex/search") },
  { id: "pages.sitemap", label: () => t(L.sitemap), icon: "list-tree", run: () => go("/torvex/sitemap") },
  {
    id: "pages.live",
    label: () => t(L.viewLive),
    icon: "eye",
    when: () => currentPage.value !== null,
    run: () => setQuery({ look: "live" }, { push: true }),
  },
  {
    id: "pages.compare",
    label: () => t(L.viewCompare),
    when: () => currentPage.value !== null,
    run: () => setQuery({ look: "compare" }, { push: true }),
  },
  {
    id: "pages.up",
    label: () => t(L.partUp),
    icon: "arrow-up",
    when: () => currentPage.value !== null && !isRoot(currentPage.value.nodeId),
    run: withCurrent(({ nodeId }) => go(pageAddress(nodeId.slice(0, -3)))),
  },
);
