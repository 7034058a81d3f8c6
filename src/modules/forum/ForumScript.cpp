#include "modules/forum/ForumScript.h"

#include <utility>

#include "platform/db/Connection.h"
#include "platform/text/ScriptText.h"
#include "platform/text/Text.h"
#include "records/Vocabulary.h"

namespace torvex {

namespace {

// Its words stand in brackets: [[2577]].
constexpr std::string_view script = R"js(
var forum = '<!--!forum!-->';
var forumId = '<!--!forumId!-->';
var topicId = '<!--!topicId!-->';
var firstId = '<!--!id!-->';
var browserVersion = Number('<!--!ua!-->') || 0;
var pictures = '/torvex/torvex_forum/images/';
var indexOfEntries = [];
var numbers = {};
var deleted = '';
var foldersTree = null;
var editWindow = null;

// ---- The tree ----

function treePicture(name) {
  return '<img src="' + pictures + name + '.gif" alt="" align="top">';
}

function Folder(folderDescription, hpageId, image, onOff, reference, total) {
  this.desc = folderDescription;
  this.hpageId = hpageId;
  this.image = image;
  this.onOff = onOff;
  this.reference = reference;
  this.total = total;
  this.id = -1;
  this.navObj = null;
  this.isOpen = true;
  this.isLastNode = true;
  this.isRoot = false;
  this.leftSide = '';
  this.children = [];
  this.initialize = initializeFolder;
  this.setState = setStateFolder;
  this.addChild = addChild;
  this.createIndex = createEntryIndex;
  this.hide = hideFolder;
  this.display = display;
  this.renderOb = renderFolder;
  this.totalHeight = totalHeight;
  this.subEntries = folderSubEntries;
  this.outputLink = outputFolderLink;
}

function Item(itemDescription, itemLink, image, onOff, reference, total) {
  this.desc = itemDescription;
  this.link = itemLink;
  this.image = image;
  this.onOff = onOff;
  this.reference = reference;
  this.total = total;
  this.id = -1;
  this.navObj = null;
  this.isLastNode = true;
  this.leftSide = '';
  this.initialize = initializeItem;
  this.setState = function () {};
  this.createIndex = createEntryIndex;
  this.hide = hideItem;
  this.display = display;
  this.renderOb = renderItem;
  this.totalHeight = totalHeight;
  this.subEntries = function () { return 0; };
  this.outputLink = function () { return ''; };
}

function childSide(node) {
  if (node.isRoot) return '';
  return node.leftSide + treePicture(node.isLastNode ? 'tree_blank' : 'tree_vertline');
}

function initializeFolder(level, lastNode, leftSide) {
  this.createIndex();
  this.isRoot = level == 0;
  this.isLastNode = lastNode;
  this.leftSide = leftSide;
  this.renderOb();
  for (var i = 0; i < this.children.length; i++) {
    this.children[i].initialize(level + 1, i == this.children.length - 1, childSide(this));
  }
}

function initializeItem(level, lastNode, leftSide) {
  this.createIndex();
  this.isLastNode = lastNode;
  this.leftSide = leftSide;
  this.renderOb();
}

function createEntryIndex() {
  this.id = indexOfEntries.length;
  indexOfEntries.push(this);
}

function addChild(child) {
  this.children.push(child);
  return child;
}

function folderPicture(folder) {
  var name = 'tree_' + (folder.isOpen ? 'm' : 'p') + (folder.isLastNode ? 'lastnode' : 'node');
  return name + (Number(folder.total) != 0 ? '_red' : '');
}

function setStateFolder(isOpen) {
  if (isOpen == this.isOpen) return;
  this.isOpen = isOpen;
  propagateChangesInState(this);
}

function propagateChangesInState(folder) {
  var picture = document.getElementById('nodeIcon' + folder.id);
  if (picture) picture.src = pictures + folderPicture(folder) + '.gif';
  for (var i = 0; i < folder.children.length; i++) {
    if (folder.isOpen) folder.children[i].display();
    else folder.children[i].hide();
  }
}

function hideItem() {
  if (this.navObj) this.navObj.style.display = 'none';
}

function hideFolder() {
  if (this.navObj) this.navObj.style.display = 'none';
  for (var i = 0; i < this.children.length; i++) this.children[i].hide();
}

function display() {
  if (this.navObj) this.navObj.style.display = 'block';
  if (!this.children || !this.isOpen) return;
  for (var i = 0; i < this.children.length; i++) this.children[i].display();
}

function outputFolderLink() {
  return '<a href="javascript:clickOnNode(' + this.id + ')"><img id="nodeIcon' + this.id + '" src="' + pictures
    + folderPicture(this) + '.gif" alt="" border="0" align="top"></a>';
}

function drawRow(node, lines) {
  node.navObj = document.createElement('div');
  node.navObj.style.whiteSpace = 'nowrap';
  node.navObj.innerHTML = lines + node.desc;
  (document.getElementById('forum_tree') || document.body).appendChild(node.navObj);
}

function renderFolder() {
  drawRow(this, this.isRoot ? '' : this.leftSide + this.outputLink());
}

function renderItem() {
  drawRow(this, this.leftSide + treePicture(this.isLastNode ? 'tree_lastnode' : 'tree_node'));
}

function totalHeight() {
  var height = this.navObj && this.navObj.style.display != 'none' ? this.navObj.offsetHeight : 0;
  if (!this.children || !this.isOpen) return height;
  for (var i = 0; i < this.children.length; i++) height += this.children[i].totalHeight();
  return height;
}

function folderSubEntries() {
  var entries = this.children.length;
  for (var i = 0; i < this.children.length; i++) entries += this.children[i].subEntries();
  return entries;
}

// ---- Its rows ----

function rowText(title, datum, total, tot, reference, img, state) {
  var text = '<img src="' + pictures + (state == '1' ? 'on' : 'off') + '.gif" id="' + reference
    + '" style="cursor:pointer" onclick="setOnOff(\'' + reference + '\')" alt="" title="[[2175]]" align="top">'
    + '<img src="' + pictures + 'del0.gif" id="del' + reference + '" style="cursor:pointer" onclick="delItem(\''
    + reference + '\')" alt="" title="[[2580]]" align="top">'
    + '&nbsp;<a href="javascript:edit(\'' + reference + '\')" title="[[1190]]">' + title + '</a> - ' + datum;
  if (Number(total) != 0) text += ' (' + total + (Number(tot) != 0 ? ', <b>' + tot + '</b>' : '') + ')';
  return text + (img == 'new' ? '&nbsp;<img src="' + pictures + 'new.gif" alt="" align="top">' : '');
}

function gFld(val, title, datum, total, tot, reference, img, state) {
  if (val == 1) return new Folder('<b>' + title + '</b>', val, '', '', '', 0);
  return new Folder(rowText(title, datum, total, tot, reference, img, state), val, img, state, reference, tot);
}

function gLnk(target, title, datum, total, tot, reference, img, state) {
  return new Item(rowText(title, datum, total, tot, reference, img, state), target, img, state, reference, tot);
}

function insFld(parent, child) {
  return parent.addChild(child);
}

function insDoc(parent, child) {
  return parent.addChild(child);
}

function clickOnFolder(folderId) {
  var clicked = indexOfEntries[folderId];
  if (!clicked.isOpen) clickOnNode(folderId);
}

function clickOnNode(folderId) {
  var clicked = indexOfEntries[folderId];
  clicked.setState(!clicked.isOpen);
}

function initializeDocument() {
  browserVersion = document.all ? 1 : document.layers ? 2 : 0;
  if (!foldersTree) return;
  foldersTree.initialize(0, true, '');
  for (var i = indexOfEntries.length - 1; i > 0; i--) indexOfEntries[i].setState(false);
  clickOnFolder(0);
}

// ---- What can be done ----

function paint(state, isMeant) {
  for (var i = 0; i < indexOfEntries.length; i++) {
    var reference = indexOfEntries[i].reference;
    var picture = reference ? document.getElementById(reference) : null;
    if (!picture || !isMeant(reference)) continue;
    picture.src = pictures + (state == '1' ? 'on' : 'off') + '.gif';
    indexOfEntries[i].onOff = state;
  }
}

function entryOf(reference) {
  for (var i = 0; i < indexOfEntries.length; i++) {
    if (indexOfEntries[i].reference == reference) return indexOfEntries[i];
  }
  return null;
}

function setOnOff(reference) {
  var entry = entryOf(reference);
  if (!entry) return;
  var onOff = entry.onOff == '1' ? '0' : '1';
  window.status = '[[2579]]';
  var rs = top.link.rsGetObject();
  var answer = rs.forum_reactionOnOff('<!--!torvex_site!-->', '<!--!torvex_lang!-->', forumId, topicId, reference, onOff);
  window.status = '';
  if (answer.return_value == '1') {
    alert('[[4]]');
  } else if (onOff == '0') {
    paint('0', function (id) { return id.indexOf(reference) == 0; });
  } else {
    paint('1', function (id) { return reference.indexOf(id) == 0; });
  }
}

function delItem(reference) {
  var list = deleted == '' ? [] : deleted.split(',');
  var at = list.indexOf(reference);
  if (at < 0) list.push(reference);
  else list.splice(at, 1);
  deleted = list.join(',');
  var picture = document.getElementById('del' + reference);
  if (picture) picture.src = pictures + (at < 0 ? 'del1' : 'del0') + '.gif';
}

function delItems() {
  if (deleted == '' || !confirm('[[2578]]\n\n[[3]]')) return;
  document.forum.action = '/torvex/torvex_forum/reactions.asp';
  document.forum.job.value = 'delete';
  document.forum.items.value = deleted;
  document.forum.submit();
}

function edit(reference) {
  editWindow = window.open('/torvex/torvex_forum/reaction.asp?pageId=<!--!torvex_pageId!-->&forumId=' + forumId
    + '&topicId=' + topicId + '&reference=' + reference, 'torvex_Forum', 'width=480,height=<!--!winHeight!-->');
}

function back() {
  close();
  document.forum.action = '/torvex/torvex_forum/topics.asp';
  document.forum.submit();
}

function close() {
  if (editWindow && !editWindow.closed) editWindow.close();
  editWindow = null;
}

// ---- The reactions ----

<!--!total_start!-->
foldersTree = gFld(1, '[[2577]] <!--!topicName!-->', '', 0, 0, '', '', '');
<!--!mainReaction_start!-->
numbers['<!--!reference!-->'] = ['<!--!id1!-->', '<!--!id2!-->'];
var <!--!name!--> = insFld(<!--!parent!-->, gFld('<!--!value!-->', '<!--!reactionTitle!-->', '<!--!reactionDate!-->', '<!--!reactionTotal!-->', '<!--!reactionOffline!-->', '<!--!reference!-->', '<!--!image!-->', '<!--!onOff!-->'));
<!--!mainReaction_end!-->
<!--!reaction_start!-->
numbers['<!--!reference!-->'] = ['<!--!id1!-->', '<!--!id2!-->'];
var <!--!name!--> = insDoc(<!--!parent!-->, gLnk('<!--!value!-->', '<!--!reactionTitle!-->', '<!--!reactionDate!-->', '<!--!reactionTotal!-->', '<!--!reactionOffline!-->', '<!--!reference!-->', '<!--!image!-->', '<!--!onOff!-->'));
<!--!reaction_end!-->
<!--!total_end!-->
)js";

// What the words say is told at their place.
constexpr int words[] = {3, 4, 1190, 2175, 2577, 2578, 2579, 2580};

}  // namespace

std::string moderationScript(db::Connection& connection, std::string_view language) {
    std::string text(script);
    for (const int word : words) {
        const std::string said = scriptText(text::htmlEncode(vocabularyText(connection, language, word)));
        text = text::replaceAll(text, "[[" + std::to_string(word) + "]]", said);
    }
    return text;
}

}  // namespace torvex
