import assert from "node:assert/strict";
import { test } from "node:test";
import {
  baseName,
  encodedPath,
  extensionOf,
  filtered,
  freeName,
  type MediaFile,
  proposedTitle,
  sizeText,
  sorted,
} from "./files";
import { filesBelow, inTreeOrder, namedOr, trailOf } from "./folders";
import { faultOf, next, progressOf, type UploadItem } from "./queue";

const folders = [
  { id: "001", name: "Plants", parent: "", level: 1, files: 3 },
  { id: "001001", name: "Roses", parent: "001", level: 2, files: 2 },
  { id: "001002", name: "Bonsai", parent: "001", level: 2, files: 4 },
  { id: "002", name: "Events", parent: "", level: 1, files: 1 },
];

test("folders are read depth first by name, and closed ones hide what is below", () => {
  assert.deepEqual(
    inTreeOrder(folders, new Set(["001"])).map((folder) => folder.name),
    ["Events", "Plants", "Bonsai", "Roses"],
  );
  assert.deepEqual(
    inTreeOrder(folders, new Set()).map((folder) => folder.name),
    ["Events", "Plants"],
  );
});

test("a branch counts its files, and the way to a folder begins at the top", () => {
  assert.equal(filesBelow(folders, "001"), 9);
  assert.deepEqual(
    trailOf(folders, "001002").map((folder) => folder.name),
    ["Plants", "Bonsai"],
  );
});

test("a folder that nobody named has the word of the interface", () => {
  const folder = { id: "003", name: "New folder", parent: "", level: 1, files: 0 };
  assert.equal(namedOr(folder, "Neuer Ordner"), "Neuer Ordner");
  assert.equal(namedOr({ ...folder, name: "Pond" }, "Neuer Ordner"), "Pond");
});

const file = (title: string, path: string, size = 1): MediaFile => ({
  kind: "images",
  folder: "001",
  title,
  alt: "",
  asked: true,
  path,
  size,
  width: 1,
  height: 1,
  type: extensionOf(path),
});

test("names, ends and titles come out of a path", () => {
  assert.equal(baseName("001/002/plan.pdf"), "plan.pdf");
  assert.equal(extensionOf("001/a.b/PLAN.PDF"), "pdf");
  assert.equal(extensionOf("001/.hidden"), "");
  assert.equal(proposedTitle("palm_house-in.spring.JPG"), "Palm house in spring");
  assert.equal([...proposedTitle(`${"ü".repeat(80)}.png`)].length, 50);
});

test("a free name is the first with a number that isn't taken", () => {
  assert.equal(freeName("plan.pdf", new Set(["plan.pdf", "plan-2.pdf"])), "plan-3.pdf");
  assert.equal(freeName("README", new Set()), "README-2");
});

test("files are found by all words of title, name and alternative text", () => {
  const files = [file("Palm house", "001/ph.jpg"), file("Palm", "001/house.png"), file("Rose", "001/rose.gif")];
  assert.deepEqual(
    filtered(files, "palm HOUSE").map((each) => each.title),
    ["Palm house", "Palm"],
  );
  assert.equal(filtered(files, " ").length, 3);
});

test("titles are sorted as people count", () => {
  const files = [file("Map 10", "a"), file("map 2", "b")];
  assert.deepEqual(
    sorted(files, "title", false).map((each) => each.title),
    ["map 2", "Map 10"],
  );
  assert.deepEqual(
    sorted([file("a", "a", 5), file("b", "b", 9)], "size", true).map((each) => each.size),
    [9, 5],
  );
});

test("sizes and addresses are written for people and browsers", () => {
  assert.equal(sizeText(512, "en"), "512 B");
  assert.equal(sizeText(1536, "de"), "1,5 KB");
  assert.equal(encodedPath("001/a#b c.png"), "001/a%23b%20c.png");
});

const upload = (id: number, state: UploadItem["state"], sent = 0): UploadItem => ({
  id,
  name: `${id}`,
  size: 100,
  sent,
  state,
  reason: "",
  path: "",
});

test("two uploads run side by side, the others wait", () => {
  const items = [upload(1, "running"), upload(2, "waiting"), upload(3, "waiting")];
  assert.deepEqual(
    next(items).map((item) => item.id),
    [2],
  );
  assert.deepEqual(
    next([upload(1, "paused"), ...items.slice(1)]).map((item) => item.id),
    [2, 3],
  );
});

test("progress counts bytes, and what was refused or skipped doesn't count", () => {
  const progress = progressOf([
    upload(1, "done"),
    upload(2, "running", 50),
    upload(3, "refused"),
    upload(4, "skipped"),
  ]);
  assert.deepEqual(progress, { percent: 75, done: 1, total: 4, open: 1 });
});

test("a taken name is asked about, a refusal stays, all else may go on", () => {
  assert.equal(faultOf(409, "exists"), "taken");
  assert.equal(faultOf(415, ""), "refused");
  assert.equal(faultOf(409, "-99"), "line");
  assert.equal(faultOf(503, ""), "line");
  assert.equal(faultOf(0, ""), "line");
});
