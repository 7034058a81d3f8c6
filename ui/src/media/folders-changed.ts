/** Tells whoever shows folders that they are others by now. */
const listeners = new Set<() => void>();

export function onFoldersChanged(listener: () => void): () => void {
  listeners.add(listener);
  return () => listeners.delete(listener);
}

export function foldersChanged(): void {
  for (const listener of [...listeners]) listener();
}
