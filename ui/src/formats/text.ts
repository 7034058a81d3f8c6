const named: Record<string, string> = { amp: "&", lt: "<", gt: ">", quot: '"', apos: "'", nbsp: "\u00a0" };

/** The text of an encoded one. */
export function decoded(html: string): string {
  return html.replace(/&(?:#(\d+)|#[xX]([0-9a-fA-F]+)|(\w+));/g, (whole, decimal, hex, name) => {
    if (name) return named[name] ?? whole;
    const code = decimal ? Number.parseInt(decimal, 10) : Number.parseInt(hex, 16);
    return code <= 0x10ffff ? String.fromCodePoint(code) : whole;
  });
}

/** A title as records hold it: encoded, with its "#" as "-@-". */
export const titleOf = (field: string) => decoded(field.replaceAll("-@-", "#"));

/** The records of a text, each closed by "###", as their fields. */
export const recordsOf = (text: string) =>
  text
    .split("###")
    .filter((record) => record !== "")
    .map((record) => record.split("#"));
