-- What is published. Pages with editStatus 'N' stay drafts: they have no live twin.

insert into TORVEX_PAGES_LIVE
  (pageId, nodeId, orderId, site, lang, parent, type, title, template, stylesheet, baseTemplate,
   application, app_param_public, app_param_admin, app_system_folder,
   navigation, previous, next, up, onlineFrom, onlineTo, breadcrumb, dynMenu, loginPage,
   online, author, authoringDate, publisher, publishingDate)
select
   pageId, nodeId, orderId, site, lang, parent, type, title, template, stylesheet, baseTemplate,
   application, app_param_public, app_param_admin, app_system_folder,
   navigation, previous, next, up, onlineFrom, onlineTo, breadcrumb, dynMenu, loginPage,
   1, editor, editingDate, 1, editingDate
from TORVEX_PAGES_DESIGN
where editStatus <> 'N';

-- Published and taken off line again.
update TORVEX_PAGES_LIVE set online = 0 where pageId in (18);

insert into TORVEX_BODIES_LIVE (pageId, bodyId, bodyType, feedId, bodyText)
select pageId, bodyId, bodyType, feedId, bodyText
from TORVEX_BODIES_DESIGN
where pageId in (select pageId from TORVEX_PAGES_LIVE);

insert into TORVEX_PAGES_GROUPS_LIVE (pageId, groupId)
select pageId, groupId
from TORVEX_PAGES_GROUPS_DESIGN
where pageId in (select pageId from TORVEX_PAGES_LIVE);

insert into TORVEX_PAGES_METADATA_LIVE
  (metaData_pageId, metaData_id, metaData_inherited, metaData_value)
select metaData_pageId, metaData_id, metaData_inherited, metaData_value
from TORVEX_PAGES_METADATA_DESIGN
where metaData_pageId in (select pageId from TORVEX_PAGES_LIVE);
