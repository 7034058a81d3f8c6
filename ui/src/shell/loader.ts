/** Fetches the parts of screens once, and says when they are there. */
type Load = (() => Promise<unknown>) | undefined;

const loaded = new WeakSet<() => Promise<unknown>>();
const failed = new WeakMap<() => Promise<unknown>, unknown>();

export function readyOr(load: Load, then: () => void): boolean {
  if (!load || loaded.has(load)) return true;
  if (failed.has(load)) return false;
  load().then(
    () => {
      loaded.add(load);
      then();
    },
    (error) => {
      failed.set(load, error);
      then();
    },
  );
  return false;
}

export const loadFailed = (load: Load) => load !== undefined && failed.has(load);

export function forgetFailure(load: Load): void {
  if (load) failed.delete(load);
}
