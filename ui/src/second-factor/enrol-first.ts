/** What stands in place of the interface while a role demands a second factor that isn't set up. */

import { html, render } from "lit";
import { L, t } from "../labels";
import "./tvx-second-factor";
import "./second-factor.css";

export function enrolFirst(): void {
  document.title = `${t(L.factor)} · Torvex`;
  render(
    html`<main class="card factor-first"><h1>${t(L.factor)}</h1><p class="notice">${t(L.factorMust)}</p>
      <tvx-second-factor @tvx-enrolled=${() => location.reload()}></tvx-second-factor>
      <p><a class="button" href="/torvex/logout">${t(L.logOut)}</a></p></main>`,
    document.body,
  );
}
