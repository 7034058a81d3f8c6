// Marks the entry of the main menu that the page belongs to. The trail above
// the page names its sections, folders included; without this script the menu
// works the same and is only unmarked.
(() => {
  const crumbs = [...document.querySelectorAll(".trail .breadcrumb, .trail .breadcrumbActive")];
  const names = crumbs.flatMap((crumb) => crumb.textContent.split("\u00a0-\u00a0")).map((name) => name.trim());
  const active = document.querySelector(".trail .breadcrumbActive")?.textContent.trim();
  for (const link of document.querySelectorAll(".menu a")) {
    const name = link.textContent.trim();
    if (name === active) link.setAttribute("aria-current", "page");
    else if (names.includes(name)) link.setAttribute("aria-current", "true");
  }
})();
