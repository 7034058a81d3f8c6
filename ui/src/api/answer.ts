/** A row of a grid, by the names of its columns. */
export type Row = Record<string, unknown>;

/** What an operation gives: one of its codes or what else its type holds. */
export type Answer<T, Code extends T> = Code | (T & NonNullable<unknown>);

interface Column {
  name: string;
  type: string;
}

export interface Grid {
  columns: Column[];
  rows: unknown[][];
}

export const isGrid = (value: unknown): value is Grid =>
  typeof value === "object" &&
  value !== null &&
  Array.isArray((value as Grid).columns) &&
  Array.isArray((value as Grid).rows);

/** Rows as objects; what is no grid stays as it is. */
export function rowsOf(value: unknown): unknown {
  if (!isGrid(value)) return value;
  const names = value.columns.map(({ name }) => name);
  return value.rows.map((row) => Object.fromEntries(names.map((name, place) => [name, row[place]])));
}
