import assert from "node:assert/strict";
import { test } from "node:test";
import { menuOf } from "./menu";

const text =
  "10#00g1#Websites#adv_websites.gif# #1#1#0###11#00g101#Sites#adv_sites.gif# #0#2#0###" +
  "30#00g3#Visitors#adv_extranet.gif# #1#1#1###31#00g301#Groups -@-1 &amp; more#adv_groups.gif#/torvex/groups.asp#0#2#0###" +
  "70#00g7#My settings# #/torvex/mySettings.asp#0#1#1###120#01s2#Metadata tags#adv_metadata.gif#/torvex/metadata.asp#0#1#1###2###";

test("entries stand below their branches, by level", () => {
  const menu = menuOf(text);
  assert.deepEqual(
    menu.map(({ title, level, children }) => [title, level, children.length]),
    [
      ["Visitors", 0, 1],
      ["My settings", 0, 0],
      ["Metadata tags", 1, 0],
    ],
  );
});

test("a branch that leads nowhere isn't there", () => {
  assert.ok(!menuOf(text).some(({ title }) => title === "Websites"));
});

test("an entry has its title, picture and program", () => {
  const groups = menuOf(text)[0]!.children[0]!;
  assert.deepEqual(
    [groups.advId, groups.title, groups.icon, groups.program],
    [31, "Groups #1 & more", "adv_groups", "/torvex/groups.asp"],
  );
});

test("a blank picture is none", () => {
  assert.equal(menuOf(text)[1]!.icon, "");
});

test("a closed website and a login without entries have no menu", () => {
  assert.deepEqual(menuOf("-1"), []);
  assert.deepEqual(menuOf("0###"), []);
});
