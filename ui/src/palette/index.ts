import { L, t } from "../labels";
import { commands } from "../shell/registry";
import { currentPage } from "../shell/workplace";
import { remember } from "./entries";
// With the shell, not when it is asked for: the first key after Ctrl+K must not be lost.
import { openPalette } from "./tvx-palette";

commands.register(
  { id: "palette", label: () => t(L.search), icon: "search", key: "Ctrl+K", run: openPalette },
  {
    id: "help",
    label: () => t(L.keys),
    icon: "keyboard",
    key: "?",
    run: async () => (await import("./help")).openHelp(),
  },
);

currentPage.watch((page) => page && remember(page));
