/** The templates with which modules are drawn. */

import { call } from "../api";
import type { Place } from "./screen";

export interface ModuleTemplate {
  readonly tpl_id: number;
  readonly tpl_name: string;
}

/** Those of the system, which pages can't have. */
const OF_THE_SYSTEM = 1;

export const moduleTemplates = (place: Place): Promise<readonly ModuleTemplate[]> =>
  call("template.getTemplateList", { ...place, listType: OF_THE_SYSTEM });

export const templateChoices = (templates: readonly ModuleTemplate[]) =>
  templates.map(({ tpl_id, tpl_name }) => [tpl_id, tpl_name] as const);
