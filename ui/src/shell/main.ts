import "../styles/tokens.css";
import "../styles/base.css";
import "../styles/controls.css";
import { html, render } from "lit";
import { isCancelled, isProblem } from "../api/problem";
import { icon } from "../kit/icon";
import { L, t } from "../labels";
import { place, startAddresses } from "./address";
import { startAppearance } from "./appearance";
import "./builtin";
import { startKeys } from "./keys";
import { readyOr } from "./loader";
import { startLoginAgain } from "./login-again";
import { startNotices } from "./notices";
import { startPresence } from "./presence";
import { screenAt } from "./registry";
import { startSession, watchConnection } from "./session";
import "./tvx-faces";
import "./tvx-phone-nav";
import { TvxShell } from "./tvx-shell";
import { workplace } from "./workplace";

function logInFirst(): void {
  const here = location.pathname + location.search;
  location.assign(`/torvex/login${here === "/torvex/" ? "" : `?to=${encodeURIComponent(here)}`}`);
}

function failed(error: unknown): void {
  const words = t(L.couldNotLoad) || "This could not be loaded.";
  const again = t(L.tryAgain) || "Try again";
  const why = error instanceof Error ? error.message : String(error);
  render(
    html`<main class="empty" role="alert">${icon("cloud-off")}<h1>${words}</h1><p class="note">${why}</p><button class="button" @click=${() => location.reload()}>${again}</button></main>`,
    document.body,
  );
}

/** A call that nobody waits for any more, or that had no line: the foot tells of that. */
function quietAboutTheLine(): void {
  window.addEventListener("unhandledrejection", (event) => {
    if (isCancelled(event.reason) || (isProblem(event.reason) && event.reason.offline)) event.preventDefault();
  });
}

async function start(): Promise<void> {
  quietAboutTheLine();
  startAppearance();
  // What draws the screen comes while the server is asked who is here.
  readyOr(screenAt(place.value)?.load, () => {});
  if (!(await startSession())) return logInFirst();
  document.getElementById("loading")?.remove();
  if (workplace.value.login?.mustEnrol) return (await import("../second-factor/enrol-first")).enrolFirst();
  startAddresses();
  startKeys();
  watchConnection();
  startLoginAgain();
  document.body.append(new TvxShell());
  startNotices();
  startPresence();
}

start().catch(failed);
