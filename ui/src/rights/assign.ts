/** Gives logins their roles, and takes them. */

import { ask } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import { failed } from "../pages/actions";
import { workplace } from "../shell/workplace";
import { setLoginRole } from "./data";

export interface Membership {
  readonly loginId: number;
  readonly name: string;
  readonly roleId: number;
  readonly role: string;
}

async function set(
  { loginId, name, roleId, role }: Membership,
  has: boolean,
  then: () => unknown,
  undo?: () => unknown,
): Promise<void> {
  try {
    await setLoginRole(loginId, roleId, has);
    toast(t(has ? L.hasRoleNow : L.hasRoleNoMore, { name, role }), undo ? { undo } : {});
  } catch (error) {
    failed(error);
  }
  then();
}

/** With Undo; who gives up a role of her own is asked before. Whatever came of it, `then` shows how it is now. */
export async function assign(member: Membership, has: boolean, then: () => unknown): Promise<void> {
  const isOwn = member.loginId === workplace.value.login?.loginId;
  const goesOn =
    has || !isOwn || (await ask(t(L.ownRole), t(L.ownRoleAsk, { role: member.role }), t(L.giveItUp), "danger"));
  if (goesOn) await set(member, has, then, () => set(member, !has, then));
  else then();
}
