// The entries of the administration menu, out of the rows that every installation begins with.

const row = /\((\d+), \d, '[^']*', '[^']*', '[^']*', '([^']+)', (\d), (\d), \d\)/g;

/** The number of the entry that lets one look at what is at an address; none where every login may. */
export function entriesSource(sql) {
  const lines = [...sql.matchAll(row)]
    .filter(([, , , view, edit]) => view === "1" || edit === "1")
    .map(([, entry, path]) => `  "${path.toLowerCase()}": ${entry},\n`);
  if (lines.length === 0) throw new Error("there are no entries of the administration menu");
  return `/** The entries of the administration menu by their addresses, but for those that every login may open. */\nexport const entryAt: Readonly<Record<string, number>> = {\n${lines.join("")}};\n`;
}
