#include "media/UploadTree.h"

namespace torvex {

// The tree draws itself into the document by the document's own methods, so that it runs in every browser of
// today and under a policy without inline handlers. The pages around it rely on the names and arguments.
const std::string_view uploadTreeTemplate = R"js(
var site = "<!--!torvex_site!-->";
var tvMode = "<!--!tvMode!-->";
var flag = "<!--!flag!-->";
var activeFolder = "<!--!activeFolder!-->";
var activeParent = "<!--!parent!-->";
var localDir;
 if (top.img.complete) localDir = top.localDir; else localDir = top.imagesURL;
var entries = [];
var shown = null;

function dir(folderId) { return folderId.replace(/(...)(?=.)/g, "$1/"); }

function picture(name) {
  var image = document.createElement("img");
  image.src = localDir + name;
  image.alt = "";
  return image;
}

function Folder(root, title, folderId, total) {
  this.root = root; this.title = title; this.folderId = folderId; this.folderDir = dir(folderId);
  this.total = total; this.id = -1; this.isOpen = root; this.isFolder = true; this.isLast = true; this.children = [];
  this.initialize = initializeFolder; this.draw = drawFolder; this.setState = setStateFolder; this.hide = hideFolder;
  this.addChild = addChild; this.subEntries = folderSubEntries; this.display = display; this.createIndex = createEntryIndex;
}

function Item(title, folderId, total) {
  this.title = title; this.folderId = folderId; this.folderDir = dir(folderId); this.total = total; this.id = -1;
  this.isFolder = false; this.isLast = true;
  this.initialize = initializeItem; this.draw = drawItem; this.hide = hideItem; this.display = display;
  this.createIndex = createEntryIndex; this.subEntries = function () { return 0; };
}

function gFld(root, title, folderId, total) { return new Folder(root, title, folderId, total); }
function gLnk(title, folderId, total) { return new Item(title, folderId, total); }
function fld(parentFolder, childFolder) { return parentFolder.addChild(childFolder); }
function item(parentFolder, child) { return parentFolder.addChild(child); }

function addChild(childNode) { this.children.push(childNode); return childNode; }
function folderSubEntries() {
  return this.children.reduce(function (sum, child) { return sum + 1 + child.subEntries(); }, 0);
}
function createEntryIndex() { this.id = entries.length; entries.push(this); }

function lineOf(node, leftSide, icon) {
  var line = document.createElement("div");
  line.className = "item";
  line.setAttribute("role", "treeitem");
  leftSide.forEach(function (name) { line.appendChild(picture(name)); });
  node.icon = picture(icon);
  if (node.toggle) {
    node.toggle.addEventListener("click", function () { clickOnNode(node.id); });
    line.appendChild(node.toggle);
  } else if (!node.root) {
    line.appendChild(picture(node.isLast ? "tv_dotsb.gif" : "tv_dots.gif"));
  }
  line.appendChild(node.icon);
  var anchor = document.createElement("a");
  anchor.id = "A" + node.folderId;
  anchor.href = "#";
  anchor.innerHTML = node.title;
  anchor.addEventListener("click", function (event) { event.preventDefault(); getFiles(node.id); });
  line.appendChild(anchor);
  var count = document.createElement("span");
  count.className = "total";
  count.textContent = " (" + node.total + ")";
  line.appendChild(count);
  node.line = line;
  document.body.appendChild(line);
}

function initializeFolder(level, lastNode, leftSide) {
  this.isLast = lastNode;
  this.createIndex();
  this.draw(leftSide);
  var below = this.root ? leftSide : leftSide.concat([lastNode ? "spacer.gif" : "tv_dotsl.gif"]);
  this.children.forEach(function (child, at, all) { child.initialize(level + 1, at === all.length - 1, below); });
}
function initializeItem(level, lastNode, leftSide) {
  this.isLast = lastNode;
  this.createIndex();
  this.draw(leftSide);
}

function drawFolder(leftSide) {
  if (!this.root && this.children.length) {
    this.toggle = picture(this.isLast ? "tv_plusdotsb.gif" : "tv_plusdots.gif");
  }
  lineOf(this, leftSide, this.root ? "tv_icon_siteOpen.gif" : "tv_icon_foldClsd.gif");
  if (!this.root) this.line.setAttribute("aria-expanded", "false");
}
function drawItem(leftSide) { lineOf(this, leftSide, "tv_icon_foldClsd.gif"); }

function setStateFolder(isOpen) {
  if (isOpen === this.isOpen) return;
  this.isOpen = isOpen;
  propagateChangesInState(this);
}
function propagateChangesInState(folder) {
  if (folder.toggle) {
    folder.toggle.src = localDir + "tv_" + (folder.isOpen ? "minus" : "plus") + "dots" + (folder.isLast ? "b" : "") + ".gif";
    folder.line.setAttribute("aria-expanded", String(folder.isOpen));
  }
  if (folder.root) folder.icon.src = localDir + (folder.isOpen ? "tv_icon_siteOpen.gif" : "tv_icon_siteClsd.gif");
  folder.children.forEach(function (child) { if (folder.isOpen) child.display(); else child.hide(); });
}
function hideFolder() { this.line.style.display = "none"; this.setState(false); }
function hideItem() { this.line.style.display = "none"; }
function display() { this.line.style.display = ""; }

function clickOnNode(folderId) {
  var folder = entries[folderId];
  if (folder && folder.isFolder) folder.setState(!folder.isOpen);
}

function getFiles(itemId) {
  var node = entries[itemId];
  if (!node) return;
  if (shown && !shown.root) shown.icon.src = localDir + "tv_icon_foldClsd.gif";
  if (!node.root) node.icon.src = localDir + "tv_icon_foldOpen.gif";
  shown = node;
  top.content.loadFiles(node.folderId, document.getElementById("A" + node.folderId).textContent);
}

function nodeOf(folderId) {
  return entries.find(function (entry) { return entry.folderId === folderId; });
}

function initializeDocument() {
  root.initialize(0, true, []);
  root.children.forEach(function (child) { child.display(); if (child.isFolder) hideBelow(child); });
  <!--!clickStr!-->
  if (flag === "delete" || flag === "new") {
    var active = nodeOf(activeFolder) || nodeOf(activeParent) || root;
    getFiles(active.id);
  }
}
function hideBelow(folder) {
  folder.children.forEach(function (child) { child.line.style.display = "none"; if (child.isFolder) hideBelow(child); });
}

var root = gFld(true, "<!--!siteName!-->", "", <!--!bigTotal!-->);
<!--!folder_start!-->
var <!--!node!--> = fld(<!--!parent!-->, gFld(false, "<!--!title!-->", "<!--!folderId!-->", <!--!total!-->));<!--!folder_end!-->
<!--!item_start!-->
var <!--!node!--> = item(<!--!parent!-->, gLnk("<!--!title!-->", "<!--!folderId!-->", <!--!total!-->));<!--!item_end!-->
initializeDocument();
)js";

}  // namespace torvex
