import { html, nothing, type TemplateResult } from "lit";
import { createRef, type Ref, ref } from "lit/directives/ref.js";
import { connection, tokenIn } from "../api/connection";
import { isProblem, Problem } from "../api/problem";
import { post } from "../api/request";
import { icon } from "../kit/icon";
import { pressPrimary } from "../kit/press-primary";
import { dialog, type TvxDialog } from "../kit/tvx-dialog";
import { L, t } from "../labels";
import { codeField } from "../second-factor/code-field";
import { canSeal, type Sealed, seal, unseal } from "./sealed";
import { whoAmI } from "./session";
import { workplace } from "./workplace";

const loginPage = "/torvex/login";

async function freshToken(): Promise<void> {
  const response = await fetch(loginPage, { credentials: "same-origin", headers: { Accept: "text/html" } });
  const token = tokenIn(await response.text());
  if (token) connection.token = token;
}

async function proven(operation: string, proof: Record<string, unknown>): Promise<void> {
  await freshToken();
  const response = await post(operation, proof);
  connection.token = response.headers.get("X-Torvex-Token") ?? connection.token;
}

const refusedBy = (error: unknown) => (isProblem(error) && error.status === 409 ? error.code : "");

/** What is asked for: with the name a password, or the code of a second factor; and whether it ends another session. */
interface Asked {
  byCode: boolean;
  held: boolean;
}

/** What is asked for next, after a refusal. */
function next(error: unknown, { byCode, held }: Asked): Asked {
  const code = refusedBy(error);
  if (code === "4") return { byCode: true, held };
  if (byCode && code === "1") return { byCode: false, held: false };
  if (byCode && code === "5") return { byCode, held: false };
  return { byCode, held: code === "3" };
}

async function logIn(username: string, typed: string, { byCode, held }: Asked): Promise<void> {
  if (byCode) await proven("desk/proveSecond", { username, code: held ? "" : typed, takeOver: held });
  else await proven(held ? "desk/takeOver" : "cManager/login", { username, password: typed });
  const login = await whoAmI();
  if (!login) throw new Problem({ status: 401, detail: t(L.notLoggedIn) });
  // Somebody else must not go on in what is on the screen.
  if (login.loginId !== workplace.value.login?.loginId) location.reload();
}

let asking = false;
/** What this tab had before its session was lost; the others had the same. */
let lost = "";
let box: TvxDialog | undefined;
const channel = typeof BroadcastChannel === "function" ? new BroadcastChannel("torvex.login") : undefined;

/** The other tabs of this session needn't ask for the password, too. */
async function tellOthers(): Promise<void> {
  if (channel && lost && canSeal()) channel.postMessage(await seal(connection.token, lost));
}

/** Another tab has logged in again: this one goes on. */
async function heard({ data }: MessageEvent<Sealed>): Promise<void> {
  const token = await unseal(data, lost || connection.token);
  if (!token) return;
  connection.token = token;
  if (!asking) return;
  const login = await whoAmI().catch(() => null);
  if (login?.loginId === workplace.value.login?.loginId) box?.close();
}

const form = (username: string, password: Ref<HTMLInputElement>, code: TemplateResult, asked: Asked) => html`
  <p class="notice">${icon("info")}<span>${t(L.sessionEnded)} ${t(L.textIsKept)}</span></p>
  <form class="stack" @submit=${(event: Event) => event.preventDefault()}>
    <div class="field"><label for="again-name">${t(L.userName)}</label><input id="again-name" class="input" autocomplete="username" readonly .value=${username} /></div>
    <div class="field"><label for="again-password">${t(L.password)}</label>
      <input id="again-password" class="input" type="password" autocomplete="current-password" autofocus ?readonly=${asked.byCode} ${ref(password)} @keydown=${pressPrimary} /></div>
    ${asked.byCode && !asked.held ? code : nothing}
  </form>
`;

/** Lies over the screen until somebody has logged in again; what is below stays as it is. */
async function askAgain(): Promise<void> {
  if (asking) return;
  asking = true;
  lost = connection.token;
  const password: Ref<HTMLInputElement> = createRef();
  let code = "";
  const typedCode = () => codeField({ id: "again-code", change: (text) => (code = text), hint: t(L.factorCodeHint) });
  const username = workplace.value.login?.username ?? "";
  let asked: Asked = { byCode: false, held: false };
  const run = async () => {
    try {
      await logIn(username, asked.byCode ? code : (password.value?.value ?? ""), asked);
      await tellOthers();
    } catch (error) {
      const wasByCode = asked.byCode;
      asked = next(error, asked);
      if (asked.byCode && !wasByCode) return askForCode();
      throw error;
    }
  };
  /** The same dialog goes on: nothing went wrong. */
  const askForCode = async (): Promise<boolean> => {
    code = "";
    box?.requestUpdate();
    await box?.updateComplete;
    box?.querySelector<HTMLElement>("#again-code")?.focus();
    return false;
  };
  await dialog({
    title: t(L.logInAgain),
    stays: true,
    body: (own) => {
      box = own;
      return html`${form(username, password, typedCode(), asked)}${asked.held ? html`<p>${t(L.takeOverQuestion)}</p>` : nothing}`;
    },
    actions: () => [{ name: "login", label: asked.held ? t(L.takeOver) : t(L.logIn), kind: "primary", run }],
  });
  asking = false;
  lost = "";
  box = undefined;
  connection.state = "online";
}

export function startLoginAgain(): void {
  channel?.addEventListener("message", (event: MessageEvent<Sealed>) => void heard(event));
  connection.watch((state) => {
    if (state === "loggedOut") void askAgain();
  });
}
