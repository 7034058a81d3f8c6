/** The dynamic menus of a website: which holds where, and how it is drawn for a page. */

import { html, type TemplateResult } from "lit";
import { customElement } from "lit/decorators.js";
import { type AnswerOf, Batch, call, isProblem } from "../api";
import { icon } from "../kit/icon";
import { dialog } from "../kit/tvx-dialog";
import { L, t } from "../labels";
import { failed } from "../pages/actions";
import { titleOr } from "../pages/words";
import { pageAddress } from "../shell/address";
import { type Group, numbered } from "./form";
import { editButton, emptyNote, markButton, moduleList, previewBox, previewButton, recordState } from "./parts";
import { pickPage } from "./pick-page";
import { ModuleScreen, type Place } from "./screen";
import { behind, foundAmong, type Stored, saveMark } from "./stored";
import { type ModuleTemplate, moduleTemplates, templateChoices } from "./templates";

const MENUS = 244;

type Menu = AnswerOf<"registers.getMenus">[number];

interface Menus {
  readonly menus: readonly Menu[];
  readonly templates: readonly ModuleTemplate[];
}

const listOf = (place: Place): Promise<readonly Menu[]> => call("registers.getMenus", place);

const valuesOf = ({ minLevels, maxLevels, templateId, display, extranet, deleted }: Menu) => ({
  minLevels,
  maxLevels,
  templateId,
  display,
  extranet,
  marked: deleted,
});
type MenuValues = ReturnType<typeof valuesOf>;

const saveMenu = (place: Place, pageId: number, values: MenuValues, work: Batch): Promise<unknown> => {
  const given = { pageId, ...place, ...values, marked: values.marked === 1 };
  return behind(work, work.do("registers.saveMenu", given));
};

/** Where one that is marked stands beside its successor, the successor. */
const storedMenu = (place: Place, pageId: number): Stored<MenuValues> => ({
  now: () =>
    foundAmong(
      (work, asBefore) => work.do("registers.getMenus", { ...place }, asBefore),
      (one) => one.pageId === pageId,
      valuesOf,
    ),
  save: (values, work) => saveMenu(place, pageId, values, work),
});

const nameOf = ({ title }: { readonly title: string }): string => t(L.menuOf, { name: titleOr(title) });

const groupsOf = (templates: readonly ModuleTemplate[]) => (): readonly Group<MenuValues>[] => [
  {
    fields: [
      { name: "templateId", label: t(L.partTemplate), kind: "choice", choices: templateChoices(templates) },
      { name: "minLevels", label: t(L.menuAlways), kind: "number", most: 20, hint: t(L.menuAlwaysHint) },
      { name: "maxLevels", label: t(L.menuDeepest), kind: "number", most: 20, hint: t(L.menuDeepestHint) },
      {
        name: "display",
        label: t(L.menuActive),
        kind: "choice",
        choices: numbered(t(L.menuActiveDeepest), t(L.menuActiveWay)),
      },
      {
        name: "extranet",
        label: t(L.menuRights),
        kind: "choice",
        choices: numbered(t(L.menuRightsTested), t(L.menuRightsAll)),
      },
    ],
  },
];

/** The menu that holds for a page: its own, or the nearest above. */
const holding = (menus: readonly Menu[], nodeId: string): Menu | undefined =>
  menus
    .filter((menu) => !menu.deleted && (nodeId === menu.nodeId || nodeId.startsWith(`${menu.nodeId}.`)))
    .sort((a, b) => b.nodeId.length - a.nodeId.length)[0];

/** As authors have it; nothing for a page without a menu. */
async function drawnMenu(pageId: number): Promise<string> {
  const work = new Batch();
  work.do("dynMenu.load", { pageIdent: String(pageId), mode: "D" });
  const drawn = work.get("dynMenu", "dmContent");
  await work.run();
  return drawn.value.dmContent;
}

@customElement("tvx-menus")
export class TvxMenus extends ModuleScreen<Menus> {
  protected readonly entry = MENUS;

  protected async read(place: Place): Promise<Menus> {
    const [menus, templates] = await Promise.all([listOf(place), moduleTemplates(place)]);
    return { menus, templates };
  }

  protected heading(): string {
    return t(L.dynamicMenus);
  }

  private async add({ menus, templates }: Menus): Promise<void> {
    const { place } = this;
    const page = await pickPage(t(L.newMenu), place, t(L.addIt));
    if (!page) return;
    const there = menus.find((menu) => menu.pageId === page.pageId);
    if (there) return this.edit({ menus, templates }, there);
    await this.fill<MenuValues>(
      {
        id: "menu",
        title: nameOf(page),
        values: {
          minLevels: 1,
          maxLevels: 2,
          templateId: menus[0]?.templateId ?? templates[0]?.tpl_id ?? 0,
          display: 0,
          extranet: 0,
          marked: 0,
        },
        groups: groupsOf(templates),
        save: (given, work) => saveMenu(place, page.pageId, given, work),
      },
      () => nameOf(page),
    );
  }

  private async edit({ templates }: Menus, menu: Menu): Promise<void> {
    const name = nameOf(menu);
    const stored = storedMenu(this.place, menu.pageId);
    await this.fill(
      { id: "menu", title: name, values: valuesOf(menu), groups: groupsOf(templates), ...stored },
      () => name,
    );
  }

  private mark(menu: Menu): void {
    const stored = storedMenu(this.place, menu.pageId);
    void this.flipMark(nameOf(menu), menu.deleted === 1, (marked) => saveMark(stored, marked));
  }

  private async publish({ menus }: Menus): Promise<void> {
    const { place } = this;
    const going = menus.filter(({ deleted }) => deleted).map(nameOf);
    await this.askAndPublish(going, () => call("dynMenu.publish", place));
  }

  private async preview(
    menus: readonly Menu[],
    page: { readonly pageId: number; readonly nodeId: string; readonly title: string },
  ): Promise<void> {
    const menu = holding(menus, page.nodeId);
    let content = "";
    try {
      content = await drawnMenu(page.pageId);
    } catch (error) {
      // "The page shows no menu."
      if (!isProblem(error) || error.status !== 409) return failed(error);
    }
    await dialog({
      title: nameOf(page),
      wide: true,
      body: () =>
        html`<p class="note">${menu ? t(L.menuStandsAt, { name: titleOr(menu.title) }) : t(L.menuNone)}</p>${previewBox(content)}`,
    });
  }

  private async previewOfAny({ menus }: Menus): Promise<void> {
    const page = await pickPage(t(L.menuForPage), this.place, t(L.preview));
    if (page) await this.preview(menus, page);
  }

  protected override tools(data: Menus): TemplateResult {
    return html`<button type="button" class="button" @click=${() => this.previewOfAny(data)}>${icon("eye")}${t(L.menuForPage)}</button>${
      this.mayEdit
        ? html`<button type="button" class="button" @click=${() => this.publish(data)}>${icon("send")}${t(L.publishAll)}</button>
          <button type="button" class="button primary" @click=${() => this.add(data)}>${icon("plus")}${t(L.newMenu)}</button>`
        : ""
    }`;
  }

  protected content(data: Menus): TemplateResult {
    if (data.menus.length === 0) return emptyNote("menu", t(L.menusEmpty));
    return html`<p class="note">${t(L.menusHint)}</p>${moduleList(
      data.menus,
      ({ pageId, deleted }) => `${pageId}.${deleted}`,
      (menu) => this.row(data, menu),
    )}`;
  }

  private row(data: Menus, menu: Menu): TemplateResult {
    const name = nameOf(menu);
    const depth = Math.max(0, (menu.nodeId.length - 5) / 3) + 1;
    return html`<li class="card module-row">
      <div class="module-name"><a href=${pageAddress(menu.pageId)}><strong>${titleOr(menu.title)}</strong></a>
        <p class="note">${t(L.menuTold, { depth, first: menu.minLevels, last: menu.maxLevels })} · ${menu.tpl_name ?? ""}</p></div>
      ${recordState(menu)}
      <div class="module-buttons">${previewButton(name, () => this.preview(data.menus, menu))}${
        this.mayEdit
          ? html`${editButton(name, () => this.edit(data, menu))}
            ${markButton(name, menu.deleted, () => this.mark(menu))}`
          : ""
      }</div></li>`;
  }
}
