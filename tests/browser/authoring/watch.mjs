// How long what an author sees takes: from her key or click until the browser has painted what it led to.

/** Waits in the page for the next event of a kind, there or in its frame, and then for what `seen` looks for. */
function watchIn(page, { event, seen }) {
  return page.evaluate(({ event, seen }) => {
    const isSeen = new Function(`return (${seen})()`);
    const documents = [document, ...[...document.querySelectorAll("iframe")].flatMap((frame) => frame.contentDocument ?? [])];
    window.watched = new Promise((resolve, reject) => {
      let from = 0;
      const patience = setTimeout(() => reject(new Error(from ? `${event} led to nothing that was looked for` : `no ${event} came`)), 60_000);
      const began = ({ timeStamp, view }) => {
        if (!from) from = (view ?? window).performance.timeOrigin + timeStamp;
      };
      for (const each of documents) each.addEventListener(event, began, { capture: true, once: true });
      const look = () => {
        if (!from || !isSeen()) return requestAnimationFrame(look);
        // What comes behind a frame's callbacks comes when it is painted.
        clearTimeout(patience);
        const channel = new MessageChannel();
        channel.port1.onmessage = () => resolve(performance.timeOrigin + performance.now() - from);
        channel.port2.postMessage(null);
      };
      requestAnimationFrame(look);
    });
  }, { event, seen: String(seen) });
}

/** Milliseconds from the event that `act` causes until what `seen` looks for, in the page, is painted. */
export async function timeOf(page, { event = "keydown", act, seen }) {
  await watchIn(page, { event, seen });
  await act();
  return page.evaluate(() => window.watched);
}

const sessions = new WeakMap();

/** One for each page: every session that listens makes all that the page does slower, a key by 0.05 ms. */
export function devtoolsOf(page) {
  if (!sessions.has(page)) sessions.set(page, page.context().newCDPSession(page));
  return sessions.get(page);
}

/** The processor time of the page's own thread so far, by kind, in milliseconds. */
export async function threadOf(page) {
  const devtools = await devtoolsOf(page);
  await devtools.send("Performance.enable", { timeDomain: "threadTicks" });
  return async () => {
    const { metrics } = await devtools.send("Performance.getMetrics");
    const of = (name) => metrics.find((metric) => metric.name === name).value * 1000;
    return { all: of("TaskDuration"), script: of("ScriptDuration"), layout: of("LayoutDuration"), styles: of("RecalcStyleDuration") };
  };
}

/** What scripts hold after all that nobody holds is gone, in bytes. */
export async function heapOf(page) {
  const devtools = await devtoolsOf(page);
  await devtools.send("HeapProfiler.enable");
  return async () => {
    for (let i = 0; i < 3; ++i) await devtools.send("HeapProfiler.collectGarbage");
    const { usedSize } = await devtools.send("Runtime.getHeapUsage");
    const counters = await devtools.send("Memory.getDOMCounters");
    return { used: usedSize, ...counters };
  };
}

/** Opens a page as a link of the interface does, without loading the interface anew. */
export async function openById(page, pageId) {
  await page.evaluate((id) => {
    const link = Object.assign(document.createElement("a"), { href: `/torvex/page.asp?pageId=${id}` });
    document.body.append(link);
    link.click();
    link.remove();
  }, pageId);
  await page.waitForFunction((id) => document.querySelector("tvx-page-frame")?.pageId === id && document.querySelector(".frame-stage")?.getAttribute("aria-busy") === "false", pageId, { polling: 50 });
}

export const median = (values) => [...values].sort((a, b) => a - b)[Math.floor(values.length / 2)];
