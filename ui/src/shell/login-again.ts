import { html, nothing } from "lit";
import { createRef, type Ref, ref } from "lit/directives/ref.js";
import { connection, tokenIn } from "../api/connection";
import { isProblem, Problem } from "../api/problem";
import { post } from "../api/request";
import { icon } from "../kit/icon";
import { dialog, type TvxDialog } from "../kit/tvx-dialog";
import { L, t } from "../labels";
import { canSeal, type Sealed, seal, unseal } from "./sealed";
import { whoAmI } from "./session";
import { workplace } from "./workplace";

const loginPage = "/torvex/login";

async function freshToken(): Promise<void> {
  const response = await fetch(loginPage, { credentials: "same-origin", headers: { Accept: "text/html" } });
  const token = tokenIn(await response.text());
  if (token) connection.token = token;
}

async function proven(operation: string, username: string, password: string): Promise<void> {
  await freshToken();
  const response = await post(operation, { username, password });
  connection.token = response.headers.get("X-Torvex-Token") ?? connection.token;
}

const heldElsewhere = (error: unknown) => isProblem(error) && error.status === 409 && error.code === "3";

async function logIn(username: string, password: string, takeOver: boolean): Promise<void> {
  await proven(takeOver ? "desk/takeOver" : "cManager/login", username, password);
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

const form = (username: string, password: Ref<HTMLInputElement>) => html`
  <p class="notice">${icon("info")}<span>${t(L.sessionEnded)} ${t(L.textIsKept)}</span></p>
  <form class="stack" @submit=${(event: Event) => event.preventDefault()}>
    <div class="field"><label for="again-name">${t(L.userName)}</label><input id="again-name" class="input" autocomplete="username" readonly .value=${username} /></div>
    <div class="field"><label for="again-password">${t(L.password)}</label>
      <input id="again-password" class="input" type="password" autocomplete="current-password" autofocus ${ref(password)}
        @keydown=${(event: KeyboardEvent) => event.key === "Enter" && (event.target as HTMLElement).closest("dialog")?.querySelector<HTMLElement>(".primary")?.click()} /></div>
  </form>
`;

/** Lies over the screen until somebody has logged in again; what is below stays as it is. */
async function askAgain(): Promise<void> {
  if (asking) return;
  asking = true;
  lost = connection.token;
  const password: Ref<HTMLInputElement> = createRef();
  const username = workplace.value.login?.username ?? "";
  let held = false;
  const run = async () => {
    try {
      await logIn(username, password.value?.value ?? "", held);
      await tellOthers();
    } catch (error) {
      held = heldElsewhere(error);
      throw error;
    }
  };
  await dialog({
    title: t(L.logInAgain),
    stays: true,
    body: (own) => {
      box = own;
      return html`${form(username, password)}${held ? html`<p>${t(L.takeOverQuestion)}</p>` : nothing}`;
    },
    actions: () => [{ name: "login", label: held ? t(L.takeOver) : t(L.logIn), kind: "primary", run }],
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
