/** The audit lines of a page, gathered by person and hour: what one author did in one go is one entry. */

export interface AuditLine {
  readonly moment: string;
  readonly loginId: number;
  readonly name: string;
  readonly action: string;
  readonly detail: string;
}

export interface HistoryEntry {
  readonly name: string;
  readonly loginId: number;
  /** The latest moment of the entry. */
  readonly moment: string;
  readonly lines: readonly AuditLine[];
}

const hourOf = (moment: string): string => moment.slice(0, 13);

/** Newest first. Lines of one person within one hour of the clock stand together as long as nobody else comes between. */
export function gather(lines: readonly AuditLine[]): HistoryEntry[] {
  const sorted = [...lines].sort((a, b) => b.moment.localeCompare(a.moment));
  const entries: { name: string; loginId: number; moment: string; lines: AuditLine[] }[] = [];
  for (const line of sorted) {
    const last = entries.at(-1);
    if (last && last.loginId === line.loginId && hourOf(last.moment) === hourOf(line.moment)) last.lines.push(line);
    else entries.push({ name: line.name, loginId: line.loginId, moment: line.moment, lines: [line] });
  }
  return entries;
}

/** The same action several times in an entry is told once, with its count. */
export function counted(lines: readonly AuditLine[]): { action: string; detail: string; count: number }[] {
  const told: { action: string; detail: string; count: number }[] = [];
  for (const line of lines) {
    const same = told.find((each) => each.action === line.action && each.detail === line.detail);
    if (same) same.count += 1;
    else told.push({ action: line.action, detail: line.detail, count: 1 });
  }
  return told;
}
