/** The audit trail: what is looked for, and its lines by days. */

export interface TrailLine {
  readonly line: number;
  readonly moment: string | null;
  readonly loginId: number | null;
  readonly name: string;
  readonly pageId: number;
  readonly title: string;
  readonly nodeId: string;
  readonly entry: number;
  readonly action: string;
  readonly detail: string;
}

export interface TrailChoice {
  readonly kind: "login" | "action" | "entry";
  readonly id: number | null;
  readonly name: string;
}

/** What the address says is looked for: the names of its values. */
export const WISHES = ["who", "did", "entry", "page", "below", "from", "to"] as const;
export type Wish = (typeof WISHES)[number];
export type Wishes = Readonly<Record<Wish, string>>;

export const wishesIn = (params: URLSearchParams): Wishes =>
  Object.fromEntries(WISHES.map((wish) => [wish, params.get(wish) ?? ""])) as Record<Wish, string>;

export const wishesNothing = (wishes: Wishes): boolean => WISHES.every((wish) => wish === "below" || !wishes[wish]);

/** As the operation takes them; a branch is one of nodes, so that its page comes as such. */
export function filtersOf(wishes: Wishes): string {
  const page = wishes.page.trim();
  const parts: [string, string][] = [
    ["login", wishes.who],
    ["action", wishes.did],
    ["entry", wishes.entry],
    [wishes.below ? "branch" : "page", page],
    ["from", wishes.from],
    ["to", wishes.to],
  ];
  return parts
    .filter(([, value]) => value !== "")
    .map(([name, value]) => `${name}:${value}`)
    .join(",");
}

/** What comes behind the lines that are there: its filters, and how many lines of those are to be passed over. */
export interface Further {
  readonly filters: string;
  readonly from: number;
}

/**
 * Counted from the day of the last line on, so that a trail that grows meanwhile leaves none out. Lines without a moment stand at the very end.
 */
export function behind(filters: string, lines: readonly TrailLine[]): Further {
  const seen = new Set<number>();
  let day = "";
  for (let at = lines.length - 1; at >= 0; --at) {
    const { line, moment } = lines[at]!;
    const own = (moment ?? "").slice(0, 10);
    if (day && own !== day) break;
    day = own;
    seen.add(line);
  }
  const others = filters.split(",").filter((part) => part && !part.startsWith("to:"));
  return { filters: day ? [...others, `to:${day.replaceAll("-", "")}`].join(",") : filters, from: seen.size };
}

export interface TrailDay {
  /** "2026-11-22", or "" for lines without a moment. */
  readonly day: string;
  readonly lines: readonly TrailLine[];
}

/** In the order in which they come; a line that came twice, as the trail had grown meanwhile, stands once. */
export function byDays(lines: readonly TrailLine[]): TrailDay[] {
  const days: { day: string; lines: TrailLine[] }[] = [];
  const seen = new Set<number>();
  for (const line of lines) {
    if (seen.has(line.line)) continue;
    seen.add(line.line);
    const day = (line.moment ?? "").slice(0, 10);
    const last = days.at(-1);
    if (last?.day === day) last.lines.push(line);
    else days.push({ day, lines: [line] });
  }
  return days;
}
