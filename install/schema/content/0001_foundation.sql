-- Pages and their bodies, design assets, sites and languages. The steps of this folder lay down the content
-- of an installation. Type words in braces are explained in README.md.

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
create index idx_torvex_pages_design_parent_orderid_nodeid on TORVEX_PAGES_DESIGN (parent, orderId, nodeId);
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
create index idx_torvex_pages_live_parent_orderid_nodeid on TORVEX_PAGES_LIVE (parent, orderId, nodeId);
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
