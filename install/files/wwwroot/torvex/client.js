// What links in pages call on the top window when there is no frame set around the page. Base templates link
// this file in their head; a frame set brings functions of its own.
(() => {
  if (window !== window.top) return;
  const documents = document.currentScript.dataset.documents || "/documents/";

  window.torvex_empty = "";

  // A document in a window of its own. A preview names its address in place of the site.
  window.popup = (site, file) => {
    window.open(site.startsWith("/") ? site : documents + site + "/" + file, "_blank", "noopener");
  };

  // A page, where a link was written for a frame set.
  window.page = (pageId) => {
    window.location.href = "/tvx.asp?pageId=" + encodeURIComponent(pageId);
  };
})();
