/** Rights in words. */

import { L, type Label, t } from "../labels";
import { word } from "../pages/words";
import type { Website } from "./data";
import type { Access, Task, Where } from "./model/grants";

/** As the heading of a column. */
const TASK_WORDS: Readonly<Record<Task, Label>> = {
  edit: L.edit,
  approve: L.approve,
  publish: L.publish,
  onOff: L.taskOnOff,
  move: L.move,
};
/** As part of a sentence: "takes publishing from ...". */
const DOING_WORDS: Readonly<Record<Task, Label>> = {
  edit: L.doingEdit,
  approve: L.doingApprove,
  publish: L.doingPublish,
  onOff: L.doingOnOff,
  move: L.doingMove,
};

export const taskWord = (task: Task): string => word(TASK_WORDS[task]);
export const doingWord = (task: Task): string => word(DOING_WORDS[task]);
export const accessWord = (access: Access): string => (access === "view" ? t(L.accessView) : t(L.accessEdit));

export const websiteText = (websites: readonly Website[], key: string): string => {
  const [site = "", lang = ""] = key.split(".");
  const found = websites.find((website) => website.site === site && website.lang === lang);
  return found ? `${found.siteName} · ${found.langName}` : key;
};

/** "Everywhere", a site, a language of all sites, or a website. */
export function whereText(websites: readonly Website[], { site, lang }: Where): string {
  if (site === "" && lang === "") return t(L.everywhere);
  if (lang === "") return websites.find((website) => website.site === site)?.siteName ?? site;
  if (site !== "") return websiteText(websites, `${site}.${lang}`);
  const name = websites.find((website) => website.lang === lang)?.langName ?? lang;
  return t(L.allSitesIn, { language: name });
}

/** A place of an answer: "bg.en", "bg", ".de" or "". */
export const placeText = (websites: readonly Website[], place: string): string => {
  const [site = "", lang = ""] = place.split(".");
  return whereText(websites, { site, lang });
};

/** A day as "yyyymmdd"; an empty one sets no bound. */
export const isValidOn = ({ validFrom, validTo }: { validFrom: string; validTo: string }, day: string): boolean =>
  (validFrom === "" || validFrom <= day) && (validTo === "" || validTo >= day);
