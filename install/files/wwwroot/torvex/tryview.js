// In a page that its author tries: hands the calls of links to the interface around it, as data. The page runs in an
// origin of its own and can't reach the interface; whatever a script in it sends is read there as text, never run.
(() => {
  const home = new URL(window.location.href).origin;
  const send = (name, values) => window.parent.postMessage({ torvex: "link", name, values }, home);

  const call = /^\s*javascript:(?:window\.)?top\.(page|popup|viewLink|viewCat)\((.*)\)\s*;?\s*$/;
  const value = /(['"])((?:\\.|(?!\1)[^\\])*)\1|(-?\d+(?:\.\d+)?)/g;
  const code = (digits) => String.fromCharCode(parseInt(digits, 16));
  const text = (source) => source.replace(/\\(?:x([0-9a-f]{2})|u([0-9a-f]{4})|(.))/gi,
    (all, two, four, plain) => (two || four ? code(two || four) : plain));
  const valuesOf = (source) => [...source.matchAll(value)].map((one) => (one[3] === undefined ? text(one[2]) : one[3]));

  document.addEventListener("click", (event) => {
    const link = event.target.closest?.("a[href], area[href]");
    if (!link || event.defaultPrevented) return;
    const address = link.getAttribute("href");
    const parts = call.exec(address);
    if (address.trim().startsWith("#")) return;
    event.preventDefault();
    if (parts) send(parts[1], valuesOf(parts[2]));
    else if (!/^\s*javascript:/i.test(address)) send("viewLink", [new URL(address, document.baseURI).href]);
  });

  // Pages ask their top window for these; here it is another origin's.
  window.torvex_empty = "";
})();
