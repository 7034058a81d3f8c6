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
