-- The content of an installation: pages, their twins, design assets, registers, logins and rights,
-- media and the modules. Type words in braces are explained in README.md.

-- Pages. Authors write the _DESIGN twin, and publishing copies to the _LIVE twin with the same keys.

create table TORVEX_PAGES_DESIGN (
  pageId {identity},
  nodeId {text},
  orderId {number} default 0,
  site {text},
  lang {text},
  parent {text} default '',
  type {text},
  title {text},
  template {number} default 0,
  stylesheet {number} default 0,
  baseTemplate {number} default 0,
  application {number} default -1,
  app_param_public {text},
  app_param_admin {text},
  app_system_folder {number} default -1,
  navigation {text},
  previous {number} default -1,
  next {number} default -1,
  up {number} default -1,
  onlineFrom {text},
  onlineTo {text},
  breadcrumb {text},
  dynMenu {text},
  loginPage {number} default -1,
  editStatus {text},
  editor {number},
  editingDate {date},
  lockStatus {flag} default 0,
  lockedBy {number},
  lockingDate {date},
  deleteStatus {flag} default 0,
  deletedBy {number},
  deletingDate {date},
  approveStatus {flag} default 0,
  approvedBy {number},
  approvingDate {date},
  emailNotification {number} default 0
);

-- Two authors who take the same free place at the same time: the second insert fails.
create unique index idx_torvex_pages_design_nodeid on TORVEX_PAGES_DESIGN (nodeId);
create index idx_torvex_pages_design_parent_orderid on TORVEX_PAGES_DESIGN (parent, orderId);
create index idx_torvex_pages_design_parent_title on TORVEX_PAGES_DESIGN (parent, title);
create index idx_torvex_pages_design_site_lang_nodeid on TORVEX_PAGES_DESIGN (site, lang, nodeId);
create index idx_torvex_pages_design_lockstatus_site_lang on TORVEX_PAGES_DESIGN (lockStatus, site, lang);
create index idx_torvex_pages_design_template on TORVEX_PAGES_DESIGN (template);
create index idx_torvex_pages_design_stylesheet on TORVEX_PAGES_DESIGN (stylesheet);
create index idx_torvex_pages_design_basetemplate on TORVEX_PAGES_DESIGN (baseTemplate);
create index idx_torvex_pages_design_application on TORVEX_PAGES_DESIGN (application);
create index idx_torvex_pages_design_previous on TORVEX_PAGES_DESIGN (previous);
create index idx_torvex_pages_design_next on TORVEX_PAGES_DESIGN (next);
create index idx_torvex_pages_design_up on TORVEX_PAGES_DESIGN (up);
create index idx_torvex_pages_design_loginpage on TORVEX_PAGES_DESIGN (loginPage);

-- A page that goes live is visible unless its publisher says otherwise: online defaults to 1.
create table TORVEX_PAGES_LIVE (
  pageId {number} not null primary key,
  nodeId {text},
  orderId {number} default 0,
  site {text},
  lang {text},
  parent {text} default '',
  type {text},
  title {text},
  template {number} default 0,
  stylesheet {number} default 0,
  baseTemplate {number} default 0,
  application {number} default -1,
  app_param_public {text},
  app_param_admin {text},
  app_system_folder {number} default -1,
  navigation {text},
  previous {number} default -1,
  next {number} default -1,
  up {number} default -1,
  onlineFrom {text},
  onlineTo {text},
  breadcrumb {text},
  dynMenu {text},
  loginPage {number} default -1,
  online {flag} default 1,
  author {number},
  authoringDate {date},
  publisher {number},
  publishingDate {date}
);

create index idx_torvex_pages_live_nodeid on TORVEX_PAGES_LIVE (nodeId);
create index idx_torvex_pages_live_parent_orderid on TORVEX_PAGES_LIVE (parent, orderId);
create index idx_torvex_pages_live_parent_title on TORVEX_PAGES_LIVE (parent, title);
create index idx_torvex_pages_live_site_lang_nodeid on TORVEX_PAGES_LIVE (site, lang, nodeId);
create index idx_torvex_pages_live_template on TORVEX_PAGES_LIVE (template);
create index idx_torvex_pages_live_stylesheet on TORVEX_PAGES_LIVE (stylesheet);
create index idx_torvex_pages_live_basetemplate on TORVEX_PAGES_LIVE (baseTemplate);
create index idx_torvex_pages_live_application on TORVEX_PAGES_LIVE (application);
create index idx_torvex_pages_live_previous on TORVEX_PAGES_LIVE (previous);
create index idx_torvex_pages_live_next on TORVEX_PAGES_LIVE (next);
create index idx_torvex_pages_live_up on TORVEX_PAGES_LIVE (up);
create index idx_torvex_pages_live_loginpage on TORVEX_PAGES_LIVE (loginPage);

-- Body type 1 is stored text, 2 an HTML feed, 3 an XML feed.
create table TORVEX_BODIES_DESIGN (
  pageId {number} not null,
  bodyId {number} not null,
  bodyType {number} default 1,
  feedId {number} default 0,
  bodyText {text},
  primary key (pageId, bodyId)
);

create index idx_torvex_bodies_design_bodytype_feedid on TORVEX_BODIES_DESIGN (bodyType, feedId);

create table TORVEX_BODIES_LIVE (
  pageId {number} not null,
  bodyId {number} not null,
  bodyType {number} default 1,
  feedId {number} default 0,
  bodyText {text},
  primary key (pageId, bodyId)
);

create index idx_torvex_bodies_live_bodytype_feedid on TORVEX_BODIES_LIVE (bodyType, feedId);

-- Groups of a page come from a list that an author may write with repetitions: no unique key.
create table TORVEX_PAGES_GROUPS_DESIGN (
  pageId {number} not null,
  groupId {number} not null
);

create index idx_torvex_pages_groups_design_pageid_groupid on TORVEX_PAGES_GROUPS_DESIGN (pageId, groupId);
create index idx_torvex_pages_groups_design_groupid_pageid on TORVEX_PAGES_GROUPS_DESIGN (groupId, pageId);

create table TORVEX_PAGES_GROUPS_LIVE (
  pageId {number} not null,
  groupId {number} not null
);

create index idx_torvex_pages_groups_live_pageid_groupid on TORVEX_PAGES_GROUPS_LIVE (pageId, groupId);
create index idx_torvex_pages_groups_live_groupid_pageid on TORVEX_PAGES_GROUPS_LIVE (groupId, pageId);

create table TORVEX_PAGES_METADATA_DESIGN (
  metaData_pageId {number} not null,
  metaData_id {number} not null,
  metaData_inherited {flag} default 0,
  metaData_value {text},
  primary key (metaData_pageId, metaData_id)
);

create index idx_torvex_pages_metadata_design_metadata_id on TORVEX_PAGES_METADATA_DESIGN (metaData_id);

create table TORVEX_PAGES_METADATA_LIVE (
  metaData_pageId {number} not null,
  metaData_id {number} not null,
  metaData_inherited {flag} default 0,
  metaData_value {text},
  primary key (metaData_pageId, metaData_id)
);

create index idx_torvex_pages_metadata_live_metadata_id on TORVEX_PAGES_METADATA_LIVE (metaData_id);

create table TORVEX_METADATA (
  metaData_id {identity},
  metaData_site {text},
  metaData_name {text},
  metaData_description {text},
  lock {text}
);

create index idx_torvex_metadata_metadata_site_metadata_name on TORVEX_METADATA (metaData_site, metaData_name);

-- Mail forms: one row per form page, and one row per choice that a visitor may pick on it.

create table TORVEX_MAILFORM (
  pageId {number} not null,
  mail_to {text},
  mail_from {text},
  mail_subject {text},
  mail_text {text},
  mail_thanksPage {number} default -1
);

create index idx_torvex_mailform_pageid on TORVEX_MAILFORM (pageId);

create table TORVEX_MAILFORM_OPTIONS (
  pageId {number} not null,
  option_order {number} default 0,
  option_name {text},
  option_value {text}
);

create index idx_torvex_mailform_options_pageid_option_order on TORVEX_MAILFORM_OPTIONS (pageId, option_order);

-- Design assets. The lock of an administrative record names the session that edits it, empty when free.

create table TORVEX_TEMPLATES (
  tpl_id {identity},
  tpl_site {text},
  tpl_lang {text},
  tpl_name {text},
  tpl_description {text},
  tpl_filename {text},
  tpl_system {flag} default 0,
  lock {text}
);

create index idx_torvex_templates_tpl_site_tpl_lang_tpl_name on TORVEX_TEMPLATES (tpl_site, tpl_lang, tpl_name);
create index idx_torvex_templates_tpl_site_tpl_lang_tpl_filename on TORVEX_TEMPLATES (tpl_site, tpl_lang, tpl_filename);

create table TORVEX_BASETEMPLATES (
  btpl_id {identity},
  btpl_site {text},
  btpl_lang {text},
  btpl_name {text},
  btpl_description {text},
  btpl_filename {text},
  lock {text}
);

create index idx_torvex_basetemplates_btpl_site_btpl_lang_btpl_name on TORVEX_BASETEMPLATES (btpl_site, btpl_lang, btpl_name);
create index idx_torvex_basetemplates_btpl_site_btpl_lang_btpl_filename on TORVEX_BASETEMPLATES (btpl_site, btpl_lang, btpl_filename);

create table TORVEX_STYLESHEETS (
  ss_id {identity},
  ss_site {text},
  ss_lang {text},
  ss_name {text},
  ss_description {text},
  ss_filename {text},
  lock {text}
);

create index idx_torvex_stylesheets_ss_site_ss_lang_ss_name on TORVEX_STYLESHEETS (ss_site, ss_lang, ss_name);
create index idx_torvex_stylesheets_ss_site_ss_lang_ss_filename on TORVEX_STYLESHEETS (ss_site, ss_lang, ss_filename);

create table TORVEX_APPLICATIONS (
  app_id {identity},
  app_name {text},
  app_description {text},
  app_href_public {text},
  app_href_admin {text},
  app_href_publish {text},
  app_param_public {text},
  app_param_admin {text},
  app_system {flag} default 0,
  lock {text}
);

create index idx_torvex_applications_app_name on TORVEX_APPLICATIONS (app_name);

-- Sites, languages and the translated interface.

create table TORVEX_SITES (
  site {text} not null primary key,
  name {text},
  description {text},
  lock {text}
);

create index idx_torvex_sites_name on TORVEX_SITES (name);

create table TORVEX_LANGUAGES (
  lang {text} not null primary key,
  name {text},
  charset_id {number} default 1,
  lock {text}
);

create index idx_torvex_languages_name on TORVEX_LANGUAGES (name);

create table TORVEX_SITES_LANGUAGES (
  site {text} not null,
  lang {text} not null,
  title {text},
  lock {text},
  primary key (site, lang)
);

create table TORVEX_CHARSETS (
  charset_id {number} not null primary key,
  charset_name {text},
  charset_label {text},
  charset_codepage {number} default 0
);

create table TORVEX_INTERFACE_LANGUAGES (
  id {identity},
  lang_id {text},
  lang_name {text},
  lang_default {flag} default 0,
  lang_enabled {flag} default 0,
  lock {text}
);

create unique index idx_torvex_interface_languages_lang_id on TORVEX_INTERFACE_LANGUAGES (lang_id);
create index idx_torvex_interface_languages_lang_name on TORVEX_INTERFACE_LANGUAGES (lang_name);

-- One column per interface language, numbered by the language's id. A new language takes a free one.
create table TORVEX_INTERFACE_VOCAB (
  lang_label {number} not null primary key,
  lang_vocab1 {text},
  lang_vocab2 {text},
  lang_vocab3 {text},
  lang_vocab4 {text},
  lang_vocab5 {text},
  lang_vocab6 {text},
  lang_vocab7 {text},
  lang_vocab8 {text},
  lang_vocab9 {text},
  lang_vocab10 {text},
  lang_vocab11 {text},
  lang_vocab12 {text},
  lang_vocab13 {text},
  lang_vocab14 {text},
  lang_vocab15 {text},
  lang_vocab16 {text},
  lang_vocab17 {text},
  lang_vocab18 {text},
  lang_vocab19 {text},
  lang_vocab20 {text}
);

-- Logins, rights and settings.

create table TORVEX_LOGINS (
  loginId {identity},
  username {text},
  password {text},
  name {text},
  job {text},
  email {text},
  emailNotification {number} default 0,
  validFrom {text},
  validTo {text},
  sessionId {text} default '',
  currentSite {text} default '',
  siteLock {text} default '',
  ipAddress {text},
  date {text},
  time {text},
  lock {text}
);

create index idx_torvex_logins_username on TORVEX_LOGINS (username);
create index idx_torvex_logins_name on TORVEX_LOGINS (name);
create index idx_torvex_logins_sessionid on TORVEX_LOGINS (sessionId);

create table TORVEX_ROLES (
  roleId {identity},
  roleName {text},
  roleDesc {text},
  lock {text}
);

create index idx_torvex_roles_rolename on TORVEX_ROLES (roleName);

create table TORVEX_ROLES_LOGINS (
  roleId {number} not null,
  loginId {number} not null
);

create index idx_torvex_roles_logins_loginid_roleid on TORVEX_ROLES_LOGINS (loginId, roleId);
create index idx_torvex_roles_logins_roleid_loginid on TORVEX_ROLES_LOGINS (roleId, loginId);

create table TORVEX_EDIT_RIGHTS (
  roleId {number} not null,
  site {text},
  lang {text},
  onOff {flag} default 0,
  move {flag} default 0,
  edit {flag} default 0,
  approve {flag} default 0,
  publish {flag} default 0,
  scope {text}
);

create index idx_torvex_edit_rights_roleid_site_lang on TORVEX_EDIT_RIGHTS (roleId, site, lang);

create table TORVEX_ADVANCED (
  advId {number} not null primary key,
  advLevel {number} default 0,
  advReference {text},
  advTitle {text},
  advIcon {text},
  advProgram {text},
  advView {flag} default 0,
  advEdit {flag} default 0,
  advAudit {flag} default 0
);

create index idx_torvex_advanced_advlevel_advreference on TORVEX_ADVANCED (advLevel, advReference);
create index idx_torvex_advanced_advreference on TORVEX_ADVANCED (advReference);

-- An empty site or lang stands for all of them.
create table TORVEX_ADVANCED_RIGHTS (
  roleId {number} not null,
  advId {number} not null,
  site {text} default '',
  lang {text} default '',
  viewAccess {flag} default 0,
  editAccess {flag} default 0
);

create index idx_torvex_advanced_rights_roleid_advid on TORVEX_ADVANCED_RIGHTS (roleId, advId);
create index idx_torvex_advanced_rights_advid_roleid on TORVEX_ADVANCED_RIGHTS (advId, roleId);

create table TORVEX_SETUP (
  parameter {text} not null,
  value {text},
  dataType {text} default 'C',
  loginId {number} not null
);

create index idx_torvex_setup_loginid_parameter on TORVEX_SETUP (loginId, parameter);

create table TORVEX_SERVERS (
  serverId {identity},
  serverName {text},
  serverIP {text},
  serverDescription {text},
  lock {text}
);

create index idx_torvex_servers_servername on TORVEX_SERVERS (serverName);

-- Visitors with a name, and their groups.

create table TORVEX_USERS (
  userId {identity},
  username {text},
  password {text},
  firstname {text},
  lastname {text},
  validFrom {text},
  validTo {text},
  lock {text}
);

create index idx_torvex_users_username on TORVEX_USERS (username);

create table TORVEX_USERGROUPS (
  groupId {identity},
  name {text},
  description {text},
  entryPage {number} default -1,
  exitPage {number} default -1,
  lock {text}
);

create index idx_torvex_usergroups_name on TORVEX_USERGROUPS (name);
create index idx_torvex_usergroups_entrypage on TORVEX_USERGROUPS (entryPage);
create index idx_torvex_usergroups_exitpage on TORVEX_USERGROUPS (exitPage);

create table TORVEX_GROUPS_USERS (
  groupId {number} not null,
  userId {number} not null
);

create index idx_torvex_groups_users_userid_groupid on TORVEX_GROUPS_USERS (userId, groupId);
create index idx_torvex_groups_users_groupid_userid on TORVEX_GROUPS_USERS (groupId, userId);

-- Media.

create table TORVEX_IMAGES (
  imgId {identity},
  img_site {text},
  img_fldId {text} default '',
  img_title {text},
  img_filename {text},
  img_size {number} default 0,
  img_width {number} default 0,
  img_height {number} default 0
);

create index idx_torvex_images_img_site_img_fldid_img_title on TORVEX_IMAGES (img_site, img_fldId, img_title);
create index idx_torvex_images_img_site_img_filename on TORVEX_IMAGES (img_site, img_filename);

create table TORVEX_DOCUMENTS (
  docId {identity},
  doc_site {text},
  doc_fldId {text} default '',
  doc_title {text},
  doc_filename {text},
  doc_size {number} default 0,
  doc_type {text}
);

create index idx_torvex_documents_doc_site_doc_fldid_doc_title on TORVEX_DOCUMENTS (doc_site, doc_fldId, doc_title);
create index idx_torvex_documents_doc_site_doc_filename on TORVEX_DOCUMENTS (doc_site, doc_filename);
create index idx_torvex_documents_doc_site_doc_title_docid on TORVEX_DOCUMENTS (doc_site, doc_title, docId);

create table TORVEX_IMAGES_FOLDERS (
  fld_site {text},
  fld_id {text},
  fld_name {text},
  fld_level {number} default 1,
  fld_parent {text} default ''
);

create index idx_torvex_images_folders_fld_site_fld_id on TORVEX_IMAGES_FOLDERS (fld_site, fld_id);
create index idx_torvex_images_folders_fld_site_fld_parent_fld_id on TORVEX_IMAGES_FOLDERS (fld_site, fld_parent, fld_id);
create index idx_torvex_images_folders_fld_site_fld_parent_fld_name on TORVEX_IMAGES_FOLDERS (fld_site, fld_parent, fld_name);
create index idx_torvex_images_folders_fld_site_fld_level_fld_name on TORVEX_IMAGES_FOLDERS (fld_site, fld_level, fld_name);

create table TORVEX_DOCUMENTS_FOLDERS (
  fld_site {text},
  fld_id {text},
  fld_name {text},
  fld_level {number} default 1,
  fld_parent {text} default ''
);

create index idx_torvex_documents_folders_fld_site_fld_id on TORVEX_DOCUMENTS_FOLDERS (fld_site, fld_id);
create index idx_torvex_documents_folders_fld_site_fld_parent_fld_id on TORVEX_DOCUMENTS_FOLDERS (fld_site, fld_parent, fld_id);
create index idx_torvex_documents_folders_fld_site_fld_parent_fld_name on TORVEX_DOCUMENTS_FOLDERS (fld_site, fld_parent, fld_name);
create index idx_torvex_documents_folders_fld_site_fld_level_fld_name on TORVEX_DOCUMENTS_FOLDERS (fld_site, fld_level, fld_name);

create table TORVEX_FOLDERS_GROUPS (
  fld_type {text},
  fld_site {text},
  fld_id {text},
  groupId {number}
);

create index idx_torvex_folders_groups_fld_type_fld_site_fld_id_groupid on TORVEX_FOLDERS_GROUPS (fld_type, fld_site, fld_id, groupId);
create index idx_torvex_folders_groups_groupid_fld_type on TORVEX_FOLDERS_GROUPS (groupId, fld_type);

create table TORVEX_MIMETYPES (
  filetype {text},
  MimeType {text}
);

create index idx_torvex_mimetypes_filetype on TORVEX_MIMETYPES (filetype);

-- Feeds.

create table TORVEX_FEEDS_HTML (
  feedId {identity},
  feedSite {text},
  feedLang {text},
  feedName {text},
  feedDescription {text},
  feedURL {text},
  feedFile {text},
  feedParameters {text},
  lock {text}
);

create index idx_torvex_feeds_html_feedsite_feedlang_feedname on TORVEX_FEEDS_HTML (feedSite, feedLang, feedName);

create table TORVEX_FEEDS_XML (
  feedId {identity},
  feedSite {text},
  feedLang {text},
  feedName {text},
  feedDescription {text},
  feedURL_XML {text},
  feedFile_XML {text},
  feedURL_XSL {text},
  feedFile_XSL {text},
  feedParameters {text},
  feedPreserveWhiteSpace {flag} default 0,
  lock {text}
);

create index idx_torvex_feeds_xml_feedsite_feedlang_feedname on TORVEX_FEEDS_XML (feedSite, feedLang, feedName);

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
