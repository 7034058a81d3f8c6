#include "authoring/TreePage.h"

#include <fmt/format.h>
#include <iterator>

#include "platform/text/ScriptText.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view head = R"(<!DOCTYPE html>
<html>
<head>
<meta http-equiv="Pragma" content="no-cache">
<meta http-equiv="Content-Type" content="text/html; charset=<!--!charset!-->">
<script>
'use strict';
)";

/// What all kinds have in common. A folder draws its children when it is opened for the first time, so that a
/// tree of very many nodes is there at once.
constexpr std::string_view tree = R"(
var localDir = top.localDir || '/torvex/images/';
var url = '<!--!torvex_url!-->';
var mode = '<!--!torvex_mode!-->';
var entries = [];

function setStateFolder(isOpen) {
  if (this.isOpen === isOpen) return;
  this.isOpen = isOpen;
  propagateChangesInState(this);
}

function propagateChangesInState(folder) {
  if (folder.isOpen && !folder.isFilled) {
    folder.isFilled = true;
    folder.children.forEach(function (child, index) {
      child.initialize(folder.level + 1, index === folder.children.length - 1, folder.inner);
    });
  }
  folder.children.forEach(function (child) {
    if (!child.element) return;
    if (folder.isOpen) child.display(); else child.hide();
  });
  folder.showState();
}

function showStateFolder() {
  if (!this.sign) return;
  var sign = this.isOpen ? 'tv_minusdots' : 'tv_plusdots';
  if (this.subEntries() === 0) sign = 'tv_dots';
  this.sign.src = localDir + sign + (this.last ? 'b.gif' : '.gif');
  this.icon.src = iconAddress(this.isOpen ? this.iconOpen : this.iconClsd);
  this.row.setAttribute('aria-expanded', String(this.isOpen));
}

function hideFolder() { this.element.hidden = true; }
function hideItem() { this.element.hidden = true; }
function display() { this.element.hidden = false; }

function initializeFolder(level, lastNode, leftSide) {
  this.level = level;
  this.last = lastNode;
  this.inner = level === 0 ? [] : leftSide.concat(lastNode ? 'spacer.gif' : 'tv_dotsl.gif');
  this.draw(leftSide);
}

function initializeItem(level, lastNode, leftSide) {
  this.level = level;
  this.last = lastNode;
  this.draw(leftSide);
}

function drawFolder(leftSide) {
  var folder = this;
  startEntry(this);
  if (this.title === '') return;
  drawLines(this, leftSide);
  this.sign = addImage(this.row, 'spacer.gif');
  this.sign.hidden = this.level === 0;
  this.sign.addEventListener('click', function () { clickOnNode(folder.id); });
  this.icon = addLink(this.row, 'icon', function () { pointAt(folder.id); }).appendChild(newImage('spacer.gif'));
  addLink(this.row, 'folder', function () { pick(folder.id); }).innerHTML = this.title;
  if (this.total !== undefined) addTotal(this.row, this.total);
  this.showState();
}

function drawItem(leftSide) {
  var item = this;
  startEntry(this);
  this.row.className = 'item';
  drawLines(this, leftSide);
  addImage(this.row, this.last ? 'tv_dotsb.gif' : 'tv_dots.gif');
  var icon = newImage('spacer.gif');
  icon.addEventListener('error', function () {
    var other = iconAddress('other');
    if (icon.src.indexOf(other) < 0) icon.src = other;
  });
  icon.src = iconAddress(this.icon);
  addLink(this.row, 'icon', function () { preview(item.id); }).appendChild(icon);
  addLink(this.row, 'title', function () { insertEntry(item); }).innerHTML = this.title;
  if (this.note) this.row.title = this.note;
}

function addChild(childNode) {
  childNode.parent = this;
  this.children.push(childNode);
  return childNode;
}

function folderSubEntries() { return this.children.length; }

function createEntryIndex() {
  this.id = entries.length;
  entries.push(this);
}

function clickOnNode(folderId) {
  var folder = entries[folderId];
  folder.setState(!folder.isOpen);
}

function initializeDocument() {
  Froot.initialize(0, true, []);
  Froot.setState(true);
}

function fld(parentFolder, childFolder) { return parentFolder.addChild(childFolder); }
function item(parentFolder, document) { return parentFolder.addChild(document); }

function iconAddress(name) { return localDir + 'tv_icon_' + name + '.gif'; }

function newImage(name) {
  var image = document.createElement('img');
  image.alt = '';
  image.src = localDir + name;
  return image;
}

function addImage(row, name) { return row.appendChild(newImage(name)); }

function addLink(row, className, act) {
  var link = document.createElement('a');
  link.href = '#';
  link.className = className;
  link.addEventListener('click', function (event) {
    event.preventDefault();
    act();
  });
  return row.appendChild(link);
}

function addTotal(row, total) {
  var shown = document.createElement('span');
  shown.className = 'total';
  shown.textContent = '(' + total + ')';
  row.appendChild(shown);
}

function startEntry(entry) {
  var place = entry.parent ? entry.parent.element : document.getElementById('tree');
  entry.element = place.appendChild(document.createElement('div'));
  entry.row = entry.element.appendChild(document.createElement('div'));
  entry.row.id = 'entry' + entry.id;
}

function drawLines(entry, leftSide) {
  leftSide.forEach(function (name) { addImage(entry.row, name); });
}

function show(address) { top.document.all.preview.src = address; }

/* A title is HTML; who inserts it wants its text. */
function plain(title) {
  var reader = document.createElement('textarea');
  reader.innerHTML = title;
  return reader.value.replace(/\u00a0/g, ' ');
}

Folder.prototype = {
  setState: setStateFolder, showState: showStateFolder, hide: hideFolder, display: display,
  initialize: initializeFolder, draw: drawFolder, addChild: addChild, subEntries: folderSubEntries,
  createIndex: createEntryIndex
};
Item.prototype = {
  hide: hideItem, display: display, initialize: initializeItem, draw: drawItem, createIndex: createEntryIndex
};
)";

/// Of a website the second argument is the script that its title runs, of a page its number.
constexpr std::string_view pages = R"(
function Folder(isWebsite, pageId, nodeId, title, iconOpen, iconClsd, type) {
  this.isWebsite = isWebsite;
  this.pageId = pageId;
  this.nodeId = nodeId;
  this.title = title;
  this.iconOpen = iconOpen;
  this.iconClsd = iconClsd;
  this.type = type;
  this.children = [];
  this.createIndex();
}

function Item(pageId, nodeId, title, icon, type) {
  this.pageId = pageId;
  this.nodeId = nodeId;
  this.title = title;
  this.icon = icon;
  this.type = type;
  this.createIndex();
}

function gFld(isWebsite, pageId, nodeId, title, iconOpen, iconClsd, type) {
  return new Folder(isWebsite, pageId, nodeId, title, iconOpen, iconClsd, type);
}
function gLnk(pageId, nodeId, title, icon, type) { return new Item(pageId, nodeId, title, icon, type); }

function preview(itemId) { show('/torvex/view.asp?pageId=' + entries[itemId].pageId + '&mode=' + mode); }
function insert(itemId) { insertItem(entries[itemId]); }
function insertItem(page) {
  var editor = top.opener;
  var own = editor.top.site + '.' + editor.top.lang;
  var target = page.nodeId.toLowerCase().indexOf(own.toLowerCase()) === 0 ? '_self' : '_blank';
  editor.insertLink('page(' + page.pageId + ')', page.nodeId, page.type, plain(page.title), target, 'pages');
}
function insertEntry(entry) { insert(entry.id); }
function pointAt(folderId) { if (entries[folderId].isWebsite) clickOnNode(folderId); else preview(folderId); }
function pick(folderId) {
  if (entries[folderId].isWebsite) entries[folderId].pageId(); else insert(folderId);
}

var Froot = gFld(true,'','','','','','');
<!--!folder_start!-->var <!--!node!--> = fld(<!--!parent!-->,gFld(<!--!isWebsite!-->,<!--!pageId!-->,'<!--!nodeId!-->','<!--!title!-->','<!--!iconOpen!-->','<!--!iconClsd!-->','<!--!type!-->'));
<!--!folder_end!--><!--!item_start!-->var <!--!node!--> = item(<!--!parent!-->,gLnk(<!--!pageId!-->,'<!--!nodeId!-->','<!--!title!-->','<!--!icon!-->','<!--!type!-->'));
<!--!item_end!-->)";

constexpr std::string_view images = R"(
function Folder(root, title, total) {
  this.title = title;
  this.total = total;
  this.iconOpen = root ? 'siteOpen' : 'foldOpen';
  this.iconClsd = root ? 'siteClsd' : 'foldClsd';
  this.children = [];
  this.createIndex();
}

function Item(reference, title, fldId, filename, width, height, size, ext) {
  this.reference = reference;
  this.title = title;
  this.fldId = fldId;
  this.filename = filename;
  this.width = width;
  this.height = height;
  this.icon = ext;
  this.note = width + ' x ' + height + ', ' + size + ' bytes';
  this.createIndex();
}

function gFld(root, title, total) { return new Folder(root, title, total); }
function gLnk(reference, title, fldId, filename, width, height, size, ext) {
  return new Item(reference, title, fldId, filename, width, height, size, ext);
}

function addressOf(image) { return url + image.fldId + image.filename; }
function preview(itemId) { show(addressOf(entries[itemId])); }
function insert(itemId) { insertItem(entries[itemId]); }
function insertItem(image) {
  top.opener.insertImage(addressOf(image), plain(image.title), image.width, image.height);
}
function insertEntry(entry) { insert(entry.id); }
function pointAt(folderId) { clickOnNode(folderId); }
function pick(folderId) { clickOnNode(folderId); }

var Froot = gFld(true,'<!--!siteName!-->',<!--!bigTotal!-->);
<!--!folder_start!-->var <!--!node!--> = fld(<!--!parent!-->,gFld(false,'<!--!title!-->',<!--!total!-->));
<!--!folder_end!--><!--!item_start!-->var <!--!node!--> = item(<!--!parent!-->,gLnk(<!--!reference!-->,'<!--!title!-->','<!--!fldId!-->','<!--!filename!-->',<!--!width!-->,<!--!height!-->,<!--!size!-->,'<!--!ext!-->'));
<!--!item_end!-->)";

constexpr std::string_view documents = R"(
function Folder(root, node, title, total) {
  this.root = root;
  this.title = title;
  this.total = total;
  this.folderDir = root ? '' : dir(node.substring(1));
  this.iconOpen = root ? 'siteOpen' : 'foldOpen';
  this.iconClsd = root ? 'siteClsd' : 'foldClsd';
  this.children = [];
  this.createIndex();
}

function Item(reference, node, title, fldId, filename, size, ext) {
  this.reference = reference;
  this.node = node;
  this.title = title;
  this.fldId = fldId;
  this.filename = filename;
  this.ext = ext;
  this.icon = ext;
  this.note = size + ' bytes';
  this.createIndex();
}

function gFld(root, node, title, total) { return new Folder(root, node, title, total); }
function gLnk(reference, node, title, fldId, filename, size, ext) {
  return new Item(reference, node, title, fldId, filename, size, ext);
}

/* The path of a folder: its id has three digits a level. */
function dir(folderId) { return (folderId.match(/.{1,3}/g) || []).join('/'); }

function preview(itemId) { show(url + entries[itemId].fldId + entries[itemId].filename); }
function insert(itemId, ext) { insertItem(entries[itemId], ext); }
function insertItem(file, ext) {
  top.opener.insertLink('file(' + file.fldId + file.filename + ')', '', ext, plain(file.title), '_blank', 'other');
}
function insertEntry(entry) { insert(entry.id, entry.ext); }
function clickInsert(folderId) {
  var folder = entries[folderId];
  top.opener.insertLink(folder.folderDir, '', 'folder', plain(folder.title), '', 'other');
}
function pointAt(folderId) { clickOnNode(folderId); }
function pick(folderId) {
  if (top.insertDocumentFolders && !entries[folderId].root) clickInsert(folderId); else clickOnNode(folderId);
}

var Froot = gFld(true,'Froot','<!--!siteName!-->',<!--!bigTotal!-->);
<!--!folder_start!-->var <!--!node!--> = fld(<!--!parent!-->,gFld(false,'<!--!node!-->','<!--!title!-->',<!--!total!-->));
<!--!folder_end!--><!--!item_start!-->var <!--!node!--> = item(<!--!parent!-->,gLnk(<!--!reference!-->,'<!--!node!-->','<!--!title!-->','<!--!fldId!-->','<!--!filename!-->',<!--!size!-->,'<!--!ext!-->'));
<!--!item_end!-->)";

/// Draws nothing.
constexpr std::string_view noKind = R"(
function initializeDocument() {}
<!--!folder_start!--><!--!folder_end!--><!--!item_start!--><!--!item_end!-->)";

constexpr std::string_view tail = R"(
</script>
<style>
body { margin: 8px; font: 12px/18px verdana, arial, helvetica, sans-serif; white-space: nowrap; }
img { width: 16px; height: 18px; vertical-align: top; }
.item { color: #333333; }
.total { margin-left: 4px; color: #666666; }
A { color: #333333; text-decoration: none; }
A:hover, A:focus { text-decoration: underline; }
A.folder { font-weight: bold; }
</style>
</head>
<body oncontextmenu="return false">
<div id="tree"></div>
<script>
initializeDocument();
</script>
</body>
</html>
)";

std::string_view scriptOf(TreeKind kind) {
    switch (kind) {
        case TreeKind::Pages:
            return pages;
        case TreeKind::Images:
            return images;
        default:
            return documents;
    }
}

bool isNameCharacter(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

}  // namespace

std::optional<TreeKind> treeKindOf(std::string_view word) {
    if (text::equals(word, "pages")) return TreeKind::Pages;
    if (text::equals(word, "pictures") || text::equals(word, "images")) return TreeKind::Images;
    if (text::equals(word, "other")) return TreeKind::Documents;
    return std::nullopt;
}

std::string treePage(std::optional<TreeKind> kind) {
    std::string page(head);
    if (kind) {
        page.append(tree).append(scriptOf(*kind));
    } else {
        page.append(noKind);
    }
    return page.append(tail);
}

std::string inTreeScript(std::string_view text) {
    std::string script;
    for (const char c : scriptText(text)) {
        if (c == '<') {
            script += "\\x3C";
        } else if (static_cast<unsigned char>(c) < ' ') {
            fmt::format_to(std::back_inserter(script), "\\x{:02x}", static_cast<unsigned char>(c));
        } else {
            script += c;
        }
    }
    return script;
}

std::string treeVariable(std::string_view name) {
    std::string variable;
    for (const char c : name) {
        if (isNameCharacter(c)) {
            variable += c;
        } else {
            fmt::format_to(std::back_inserter(variable), "_{:02x}", static_cast<unsigned char>(c));
        }
    }
    return variable;
}

}  // namespace torvex
