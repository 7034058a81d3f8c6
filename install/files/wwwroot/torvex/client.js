// What links in pages call on the top window when there is no frame set around the page. Base templates link
// this file in their head; a frame set brings functions of its own, and links it for the calls.
(() => {
  const call = /^\s*javascript:(?:window\.)?top\.(page|popup)\((['"])(.*?)\2,\2(.*?)\2\)\s*;?\s*$/;
  const code = (digits) => String.fromCharCode(parseInt(digits, 16));
  const text = (source) => source.replace(/\\(?:x([0-9a-f]{2})|u([0-9a-f]{4})|(.))/gi,
    (all, two, four, plain) => (two || four ? code(two || four) : plain));

  // A page's policy may forbid addresses that are scripts: what they call is called from here.
  const follow = (event) => {
    const link = event.target.closest?.("a[href], area[href]");
    const parts = link && !event.defaultPrevented && call.exec(link.getAttribute("href"));
    const target = parts && window.top[parts[1]];
    if (!target) return;
    event.preventDefault();
    target(text(parts[3]), text(parts[4]));
  };
  const watch = (page) => page.addEventListener("click", follow);

  watch(document);
  if (window !== window.top) return;
  const documents = document.currentScript.dataset.documents || "/documents/";

  // For a frame set: the same in the page that it shows.
  window.torvex_watch = watch;
  window.torvex_empty = "";

  // A document in a window of its own. A preview names its address in place of the site.
  window.popup = (site, file) => {
    window.open(site.startsWith("/") ? site : documents + site + "/" + file, "_blank", "noopener");
  };

  // A page, where a link was written for a frame set.
  window.page = (pageId) => {
    window.location.href = "/tvx.asp?pageId=" + encodeURIComponent(pageId);
  };

  // Another category of the message board on this page.
  window.viewCat = (category) => {
    const address = new URL("/torvex_msgBoard/", window.location.href);
    address.searchParams.set("pageId", new URLSearchParams(window.location.search).get("pageId") || "");
    address.searchParams.set("cat", category);
    window.location.href = address;
  };
})();
