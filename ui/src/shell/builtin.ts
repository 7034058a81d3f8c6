// What the shell comes with. Other rooms put themselves in by a line of their own here.
import "../administration";
import "../dashboard";
import "../design/register";
import "../editor";
import "../media/register";
import "../modules/register";
import "../pages/register";
import "../palette";
import "../rights/register";
import "../system/register";
import "../tree";
import "../websites/register";
import { L, t } from "../labels";
import { commands } from "./registry";
import { shell } from "./tvx-shell";

commands.register(
  { id: "region", label: () => t(L.nextRegion), key: "F6", run: () => shell()?.goRound(false) },
  { id: "regionBack", label: () => t(L.previousRegion), key: "Shift+F6", run: () => shell()?.goRound(true) },
  { id: "left", label: () => t(L.showNavigation), icon: "panel-left", run: () => shell()?.toggle("left") },
  { id: "right", label: () => t(L.showDetails), icon: "panel-right", run: () => shell()?.toggle("right") },
);
