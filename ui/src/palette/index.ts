import { L, t } from "../labels";
import { commands } from "../shell/registry";
import { currentPage } from "../shell/workplace";

commands.register(
  {
    id: "palette",
    label: () => t(L.search),
    icon: "search",
    key: "Ctrl+K",
    run: async () => (await import("./tvx-palette")).openPalette(),
  },
  {
    id: "help",
    label: () => t(L.keys),
    icon: "keyboard",
    key: "?",
    run: async () => (await import("./help")).openHelp(),
  },
);

currentPage.watch((page) => {
  if (page) void import("./entries").then(({ remember }) => remember(page));
});
