/** What narrows the pictures that can be chosen: their size, and which were chosen lately. */

interface Sized {
  readonly width: number;
  readonly height: number;
}

/** "600 × 400"; nothing for what has no size, as drawings. */
export const sizeOf = ({ width, height }: Sized): string => (width > 0 && height > 0 ? `${width} × ${height}` : "");

/** The sizes that occur, the most frequent first. */
export function sizesOf(pictures: readonly Sized[]): string[] {
  const counts = new Map<string, number>();
  for (const size of pictures.map(sizeOf).filter(Boolean)) counts.set(size, (counts.get(size) ?? 0) + 1);
  return [...counts].sort(([, a], [, b]) => b - a).map(([size]) => size);
}

/** As many are remembered. */
export const MOST_RECENT = 12;

/** The latest first, each once. */
export const withLatest = (paths: readonly string[], path: string): string[] =>
  [path, ...paths.filter((each) => each !== path)].slice(0, MOST_RECENT);

/** Paths as a browser kept them, whatever it kept. */
export function pathsFrom(text: string | null): string[] {
  try {
    const paths: unknown = JSON.parse(text ?? "[]");
    return Array.isArray(paths) ? paths.filter((path) => typeof path === "string") : [];
  } catch {
    return [];
  }
}
