/** "IF" of "Iris Falk". */
export const initials = (name: string) =>
  name
    .split(/\s+/)
    .filter(Boolean)
    .map((word) => word[0]!.toUpperCase())
    .filter((_, at, all) => at === 0 || at === all.length - 1)
    .join("");
