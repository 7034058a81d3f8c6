// Two texts beside each other, and the choice between them.
import { diffWordsWithSpace } from "diff";
import { html, type TemplateResult } from "lit";
import { dialog } from "../kit";

/** Beyond this the differences are told by lines of plain text: telling them by words would take too long. */
const longest = 60_000;

function marked(one: string, other: string): [TemplateResult[], TemplateResult[]] {
  if (one.length + other.length > longest) return [[html`${one}`], [html`${other}`]];
  const parts = diffWordsWithSpace(other, one);
  const left = parts
    .filter(({ removed }) => !removed)
    .map(({ added, value }) => (added ? html`<ins>${value}</ins>` : html`${value}`));
  const right = parts
    .filter(({ added }) => !added)
    .map(({ removed, value }) => (removed ? html`<del>${value}</del>` : html`${value}`));
  return [left, right];
}

/** Answers "one" or "other", or "" when nothing was chosen. */
export async function compareDialog(
  oneTitle: string,
  one: string,
  otherTitle: string,
  other: string,
  takeOne: string,
  takeOther: string,
): Promise<"one" | "other" | ""> {
  const [left, right] = marked(one, other);
  const answer = await dialog({
    title: `${oneTitle} · ${otherTitle}`,
    wide: true,
    body: () => html`<div class="compare-texts">
      <section><h3>${oneTitle}</h3><div class="text" tabindex="0" role="group" aria-label=${oneTitle}>${left}</div></section>
      <section><h3>${otherTitle}</h3><div class="text" tabindex="0" role="group" aria-label=${otherTitle}>${right}</div></section>
    </div>`,
    actions: () => [
      { name: "other", label: takeOther },
      { name: "one", label: takeOne, kind: "primary" },
    ],
  });
  return answer as "one" | "other" | "";
}
