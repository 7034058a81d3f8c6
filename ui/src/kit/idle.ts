/** Does what nobody waits for when the browser has nothing else to do, after a second at the latest. */
export function whenIdle(work: () => unknown): void {
  if ("requestIdleCallback" in window) window.requestIdleCallback(() => void work(), { timeout: 1000 });
  else setTimeout(work, 200);
}
