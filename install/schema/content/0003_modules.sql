-- Message board. Orders and alignments count from 1: 0 is no valid choice, so 1 is the default.

create table TORVEX_MSGB_CATEGORIES_DESIGN (
  msgB_Id {identity},
  msgB_site {text},
  msgB_lang {text},
  msgB_catId {text},
  msgB_catTitle {text},
  msgB_catDesc {text},
  msgB_parent {text} default '',
  msgB_itemOrder {number} default 1,
  msgB_archiveAfter {number} default 0,
  msgB_archiveVisible {flag} default 0,
  msgB_linkText {text},
  msgB_imageAlignment {number} default 1,
  msgB_imageWidth {number} default 0,
  msgB_imageHeight {number} default 0,
  msgB_online {number} default 0,
  msgB_pageSize {number} default 0,
  msgB_deleted {flag} default 0,
  msgB_modified {flag} default 0
);

create index idx_torvex_msgb_categories_design_site_lang_catid on TORVEX_MSGB_CATEGORIES_DESIGN (msgB_site, msgB_lang, msgB_catId);
create index idx_torvex_msgb_categories_design_site_lang_parent on TORVEX_MSGB_CATEGORIES_DESIGN (msgB_site, msgB_lang, msgB_parent, msgB_catTitle);

create table TORVEX_MSGB_CATEGORIES_LIVE (
  msgB_Id {number} not null primary key,
  msgB_site {text},
  msgB_lang {text},
  msgB_catId {text},
  msgB_catTitle {text},
  msgB_catDesc {text},
  msgB_parent {text} default '',
  msgB_itemOrder {number} default 1,
  msgB_archiveAfter {number} default 0,
  msgB_archiveVisible {flag} default 0,
  msgB_linkText {text},
  msgB_imageAlignment {number} default 1,
  msgB_imageWidth {number} default 0,
  msgB_imageHeight {number} default 0,
  msgB_online {number} default 0,
  msgB_pageSize {number} default 0
);

create index idx_torvex_msgb_categories_live_site_lang_catid on TORVEX_MSGB_CATEGORIES_LIVE (msgB_site, msgB_lang, msgB_catId);
create index idx_torvex_msgb_categories_live_site_lang_parent on TORVEX_MSGB_CATEGORIES_LIVE (msgB_site, msgB_lang, msgB_parent, msgB_catTitle);

create table TORVEX_MSGB_ITEMS_DESIGN (
  msgB_itemId {identity},
  msgB_site {text},
  msgB_lang {text},
  msgB_catId {text},
  msgB_Id {number} default 0,
  msgB_itemTitle {text},
  msgB_itemDesc {text},
  msgB_itemLink {text},
  msgB_itemLinkText {text},
  msgB_itemImage {text},
  msgB_itemDate {text},
  msgB_onlineDate {text},
  msgB_archiveDate {text},
  msgB_itemOnline {number} default 0,
  msgB_itemNewsflash {number} default 0,
  msgB_deleted {flag} default 0,
  msgB_modified {flag} default 0
);

create index idx_torvex_msgb_items_design_msgb_id_msgb_archivedate on TORVEX_MSGB_ITEMS_DESIGN (msgB_Id, msgB_archiveDate);
create index idx_torvex_msgb_items_design_site_lang_catid on TORVEX_MSGB_ITEMS_DESIGN (msgB_site, msgB_lang, msgB_catId);

create table TORVEX_MSGB_ITEMS_LIVE (
  msgB_itemId {number} not null primary key,
  msgB_site {text},
  msgB_lang {text},
  msgB_catId {text},
  msgB_Id {number} default 0,
  msgB_itemTitle {text},
  msgB_itemDesc {text},
  msgB_itemLink {text},
  msgB_itemLinkText {text},
  msgB_itemImage {text},
  msgB_itemDate {text},
  msgB_onlineDate {text},
  msgB_archiveDate {text},
  msgB_itemOnline {number} default 0,
  msgB_itemNewsflash {number} default 0
);

create index idx_torvex_msgb_items_live_msgb_id_msgb_archivedate on TORVEX_MSGB_ITEMS_LIVE (msgB_Id, msgB_archiveDate);
create index idx_torvex_msgb_items_live_site_lang_catid on TORVEX_MSGB_ITEMS_LIVE (msgB_site, msgB_lang, msgB_catId);

-- Newsflashes.

create table TORVEX_NEWSFLASH_DESIGN (
  nf_Id {identity},
  id {number} default 0,
  title {text},
  site {text},
  lang {text},
  itemOrder {number} default 1,
  itemLength {number} default 0,
  numberOfItems {number} default 0,
  mode {text},
  templateId {number} default 0,
  imageAlignment {number} default 1,
  imageWidth {number} default 0,
  imageHeight {number} default 0,
  deleted {flag} default 0,
  modified {flag} default 0
);

create index idx_torvex_newsflash_design_site_lang_id on TORVEX_NEWSFLASH_DESIGN (site, lang, id);
create index idx_torvex_newsflash_design_site_lang_title on TORVEX_NEWSFLASH_DESIGN (site, lang, title);
create index idx_torvex_newsflash_design_templateid on TORVEX_NEWSFLASH_DESIGN (templateId);

create table TORVEX_NEWSFLASH_LIVE (
  nf_Id {number} not null primary key,
  id {number} default 0,
  title {text},
  site {text},
  lang {text},
  itemOrder {number} default 1,
  itemLength {number} default 0,
  numberOfItems {number} default 0,
  mode {text},
  templateId {number} default 0,
  imageAlignment {number} default 1,
  imageWidth {number} default 0,
  imageHeight {number} default 0,
  deleted {flag} default 0,
  modified {flag} default 0
);

create index idx_torvex_newsflash_live_site_lang_id on TORVEX_NEWSFLASH_LIVE (site, lang, id);
create index idx_torvex_newsflash_live_site_lang_title on TORVEX_NEWSFLASH_LIVE (site, lang, title);
create index idx_torvex_newsflash_live_templateid on TORVEX_NEWSFLASH_LIVE (templateId);

create table TORVEX_NEWSFLASH_CATEGORIES_DESIGN (
  nf_Id {number} not null,
  msgB_Id {number} not null
);

create index idx_torvex_newsflash_categories_design_nf_id_msgb_id on TORVEX_NEWSFLASH_CATEGORIES_DESIGN (nf_Id, msgB_Id);
create index idx_torvex_newsflash_categories_design_msgb_id_nf_id on TORVEX_NEWSFLASH_CATEGORIES_DESIGN (msgB_Id, nf_Id);

create table TORVEX_NEWSFLASH_CATEGORIES_LIVE (
  nf_Id {number} not null,
  msgB_Id {number} not null
);

create index idx_torvex_newsflash_categories_live_nf_id_msgb_id on TORVEX_NEWSFLASH_CATEGORIES_LIVE (nf_Id, msgB_Id);
create index idx_torvex_newsflash_categories_live_msgb_id_nf_id on TORVEX_NEWSFLASH_CATEGORIES_LIVE (msgB_Id, nf_Id);

-- Discussion forums. Topics are numbered within their forum, reactions within their topic.

create table TORVEX_FORUM_DESIGN (
  forum_id {identity},
  forum_site {text},
  forum_lang {text},
  forum_reference {text},
  forum_name {text},
  forum_desc {text},
  forum_hotPeriod {number} default 0,
  forum_reactionsOnline {flag} default 0,
  forum_archiveAfter {number} default 0,
  forum_archiveVisible {flag} default 0,
  forum_sendEmail {flag} default 0,
  forum_emailFrom {text},
  forum_emailSubject {text},
  forum_pageSize {number} default 0,
  forum_deleted {flag} default 0,
  forum_modified {flag} default 0
);

create index idx_torvex_forum_design_forum_site_forum_lang_forum_name on TORVEX_FORUM_DESIGN (forum_site, forum_lang, forum_name);

create table TORVEX_FORUM_LIVE (
  forum_id {number} not null primary key,
  forum_site {text},
  forum_lang {text},
  forum_reference {text},
  forum_name {text},
  forum_desc {text},
  forum_hotPeriod {number} default 0,
  forum_reactionsOnline {flag} default 0,
  forum_archiveAfter {number} default 0,
  forum_archiveVisible {flag} default 0,
  forum_sendEmail {flag} default 0,
  forum_emailFrom {text},
  forum_emailSubject {text},
  forum_pageSize {number} default 0
);

create index idx_torvex_forum_live_forum_site_forum_lang_forum_name on TORVEX_FORUM_LIVE (forum_site, forum_lang, forum_name);

create table TORVEX_FORUM_TOPICS (
  topic_id {number} not null,
  topic_forumId {number} not null,
  topic_title {text},
  topic_dateCreation {text},
  primary key (topic_forumId, topic_id)
);

create table TORVEX_FORUM_REACTIONS (
  reaction_id {number} not null,
  reaction_forumId {number} not null,
  reaction_topicId {number} not null,
  reaction_reference {text},
  reaction_title {text},
  reaction_date {text},
  reaction_online {flag} default 0,
  primary key (reaction_forumId, reaction_topicId, reaction_id)
);

create index idx_torvex_forum_reactions_forumid_topicid_reference on TORVEX_FORUM_REACTIONS (reaction_forumId, reaction_topicId, reaction_reference);

-- Dynamic menus. A menu that waits for its removal may stand beside its successor: no unique key.

create table TORVEX_DYNMENU_DESIGN (
  site {text},
  lang {text},
  pageId {number} not null,
  minLevels {number} default 0,
  maxLevels {number} default 0,
  templateId {number} default 0,
  display {number} default 0,
  extranet {number} default 0,
  deleted {flag} default 0,
  modified {flag} default 0
);

create index idx_torvex_dynmenu_design_pageid on TORVEX_DYNMENU_DESIGN (pageId);
create index idx_torvex_dynmenu_design_site_lang on TORVEX_DYNMENU_DESIGN (site, lang);
create index idx_torvex_dynmenu_design_templateid on TORVEX_DYNMENU_DESIGN (templateId);

create table TORVEX_DYNMENU_LIVE (
  site {text},
  lang {text},
  pageId {number} not null,
  minLevels {number} default 0,
  maxLevels {number} default 0,
  templateId {number} default 0,
  display {number} default 0,
  extranet {number} default 0,
  deleted {flag} default 0,
  modified {flag} default 0
);

create index idx_torvex_dynmenu_live_pageid on TORVEX_DYNMENU_LIVE (pageId);
create index idx_torvex_dynmenu_live_site_lang on TORVEX_DYNMENU_LIVE (site, lang);
create index idx_torvex_dynmenu_live_templateid on TORVEX_DYNMENU_LIVE (templateId);

-- Site search. In the numbered settings 0 leaves the choice to the search form.

create table TORVEX_SEARCH (
  search_pageId {number} not null primary key,
  search_catalogName {text},
  search_catalogLocation {number} default 0,
  search_serverName {text},
  search_webshare {text},
  search_includePages {number} default 0,
  search_includeDocuments {number} default 0,
  search_pageScopes {text},
  search_documentScopes {text},
  search_includeDocumentTypes {number} default 0,
  search_documentTypes {text},
  search_properties {text},
  search_sortOrder {number} default 0,
  search_maxResults {number} default 0,
  search_resultsPerPage {number} default 0,
  search_wordLength {number} default 0,
  search_match {number} default 0,
  search_derivation {number} default 0,
  search_security {number} default 0
);

-- One row per page and word, so that one statement can insert it or add to it.
create table TORVEX_SEARCH_LOG (
  search_pageId {number} not null,
  search_word {text} not null,
  search_count {number} default 0,
  primary key (search_pageId, search_word)
);
