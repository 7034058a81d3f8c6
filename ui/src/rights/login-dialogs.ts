/** A new login, and a new password for one. */

import { html, type TemplateResult } from "lit";
import { copyButton } from "../kit/copy-button";
import { dialog } from "../kit/tvx-dialog";
import { L, t } from "../labels";
import { addDialog } from "../records/add-dialog";
import { textField } from "../records/fields";
import { addLogin, type Details, type LoginRecord, saveLogin } from "./data";
import { newPassword } from "./model/password";

const empty: Details = {
  adminUsername: "",
  adminFullname: "",
  adminJob: "",
  adminEmail: "",
  adminValidFrom: "",
  adminValidTo: "",
};

/** Shown this once: nobody can be told it again. */
const shownOnce = (name: string, password: string): Promise<string> =>
  dialog({
    title: t(L.passwordOf, { name }),
    stays: true,
    body: () => html`<p>${t(L.passwordOnce)}</p>
      <p class="new-password"><code>${password}</code>${copyButton(password)}</p>`,
    actions: () => [{ name: "close", label: t(L.passwordNoted), kind: "primary" }],
  });

/** The number of the login that was added, or "". */
export async function newLoginDialog(): Promise<string> {
  let details = empty;
  const password = newPassword();
  const field = (id: string, label: string, part: keyof Details, longest: number): TemplateResult =>
    textField({ id, label, value: details[part], longest, change: (text) => (details = { ...details, [part]: text }) });
  const fields = (): TemplateResult =>
    html`${field("login-new-name", t(L.fullName), "adminFullname", 30)}
      ${field("login-new-user", t(L.userName), "adminUsername", 20)}
      ${field("login-new-job", t(L.job), "adminJob", 50)}
      ${field("login-new-mail", t(L.email), "adminEmail", 50)}
      <p class="note">${t(L.passwordIsMade)}</p>`;
  const made = await addDialog(t(L.newLogin), fields, () => addLogin(details, password));
  if (made) await shownOnce(details.adminFullname, password);
  return made;
}

/** Whether a new password was given. */
export async function newPasswordDialog(login: LoginRecord): Promise<boolean> {
  const password = newPassword();
  const name = login.details.adminFullname;
  const answer = await dialog({
    title: t(L.newPasswordOf, { name }),
    body: () => html`<p>${t(L.newPasswordAsk, { name })}</p>`,
    actions: () => [
      { name: "cancel", label: t(L.cancel) },
      { name: "go", label: t(L.newPassword), kind: "danger", run: () => saveLogin(login, login.details, password) },
    ],
  });
  if (answer !== "go") return false;
  await shownOnce(name, password);
  return true;
}
