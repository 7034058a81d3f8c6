// What the menus gain from a script; without it they work the same. The entry of the page itself is told from those
// of the sections above it, and Escape shuts an open panel of the main menu.
(() => {
  for (const link of document.querySelectorAll(":is(.menu, .section) a[aria-current]")) {
    if (link.href === location.href.split("#")[0]) link.setAttribute("aria-current", "page");
  }
  const entries = [...document.querySelectorAll(".menu > ul > li")];
  for (const entry of entries) {
    const reopen = () => entry.classList.remove("shut");
    entry.addEventListener("pointerleave", reopen);
    entry.addEventListener("focusout", (event) => { if (!entry.contains(event.relatedTarget)) reopen(); });
  }
  document.addEventListener("keydown", (event) => {
    if (event.key !== "Escape") return;
    for (const entry of entries) {
      if (!entry.matches(":hover, :focus-within")) continue;
      if (entry.contains(document.activeElement)) entry.querySelector("a").focus();
      entry.classList.add("shut");
    }
  });
})();
