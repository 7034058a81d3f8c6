/** What one has changed oneself of a record that somebody else may have changed, too. */

type Parts<Part extends string> = Readonly<Record<Part, unknown>>;

export const changedParts = <Part extends string>(
  parts: readonly Part[],
  mine: Parts<Part>,
  was: Parts<Part>,
): Part[] => parts.filter((part) => mine[part] !== was[part]);

/** What is there now, with what one has changed oneself since it was so on top of it. */
export function withOwn<Part extends string, Now extends Parts<Part>>(
  parts: readonly Part[],
  now: Now,
  mine: Now,
  was: Parts<Part>,
): Now {
  const own = changedParts(parts, mine, was).map((part) => [part, mine[part]]);
  return { ...now, ...Object.fromEntries(own) };
}
