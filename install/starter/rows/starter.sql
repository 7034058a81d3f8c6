-- One site in one language with three published pages. The words in double braces are put in by the program.

insert into TORVEX_LANGUAGES (lang, name, charset_id, lock) values ('{{lang}}', '{{langName}}', 1, '');

insert into TORVEX_SITES (site, name, description, lock) values ('{{site}}', '{{title}}', '', '');

insert into TORVEX_SITES_LANGUAGES (site, lang, title, lock) values ('{{site}}', '{{lang}}', '{{title}}', '');

insert into TORVEX_SETUP (parameter, value, dataType, loginId) values ('tvx_default_pageId', '1', 'N', 0);

insert into TORVEX_METADATA (metaData_id, metaData_site, metaData_name, metaData_description, lock) values
  (1, '{{site}}', 'author', 'Author', ''),
  (2, '{{site}}', 'comments', 'Comments', ''),
  (3, '{{site}}', 'company', 'Company', ''),
  (4, '{{site}}', 'keywords', 'The html keywords', ''),
  (5, '{{site}}', 'subject', 'The html subject', ''),
  (6, '{{site}}', 'description', 'The html description', '');

insert into TORVEX_TEMPLATES
  (tpl_id, tpl_site, tpl_lang, tpl_name, tpl_description, tpl_filename, tpl_system, lock) values
  (1, '{{site}}', '{{lang}}', 'Home page', 'Headline, lead and cards', 'home.html', 0, ''),
  (2, '{{site}}', '{{lang}}', 'Standard page', 'Headline, lead and text', 'page.html', 0, '');

insert into TORVEX_BASETEMPLATES (btpl_id, btpl_site, btpl_lang, btpl_name, btpl_description, btpl_filename, lock)
values (1, '{{site}}', '{{lang}}', 'Page', 'Header, trail, neighbouring pages and footer', 'page.html', '');

insert into TORVEX_STYLESHEETS (ss_id, ss_site, ss_lang, ss_name, ss_description, ss_filename, lock)
values (1, '{{site}}', '{{lang}}', 'Site', 'The look of all pages', 'site.css', '');

-- 0 as template, stylesheet or base template asks the parent page.
insert into TORVEX_PAGES_DESIGN
  (pageId, nodeId, orderId, site, lang, parent, type, title, template, stylesheet, baseTemplate, application,
   navigation, onlineFrom, onlineTo, breadcrumb, dynMenu, editStatus, editor, editingDate)
values
  (1, '{{site}}.{{lang}}', 1, '{{site}}', '{{lang}}', '', 'P', 'Home', 1, 1, 1, -1,
   'A', '', '', '1', '0', 'P', 1, '{{now}}'),
  (2, '{{site}}.{{lang}}.01', 1, '{{site}}', '{{lang}}', '{{site}}.{{lang}}', 'P', 'First steps', 2, 0, 0, -1,
   'A', '', '', '1', '0', 'P', 1, '{{now}}'),
  (3, '{{site}}.{{lang}}.02', 2, '{{site}}', '{{lang}}', '{{site}}.{{lang}}', 'P', 'About', 2, 0, 0, -1,
   'A', '', '', '1', '0', 'P', 1, '{{now}}');

insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
  (1, 1, 1, 0, 'Welcome to {{titleHtml}}'),
  (1, 2, 1, 0, '<p>This site is up and running. What you see here is yours to change: the words, the look and the pages.</p>'),
  (1, 3, 1, 0, '<ul class="cards">
  <li>
    <h2><a href="/torvex/page.asp?pageId=1">Write your first page</a></h2>
    <p>Log in with the name and the password that were shown when this site was made. Then choose New page, and Create.</p>
  </li>
  <li>
    <h2><a href="/tvx.asp?pageId=2">First steps</a></h2>
    <p>Where the pages, the templates and the settings are, and what to change first.</p>
  </li>
  <li>
    <h2><a href="/tvx.asp?pageId=3">About</a></h2>
    <p>A page for who you are and how you can be reached.</p>
  </li>
</ul>'),
  (2, 1, 1, 0, 'First steps'),
  (2, 2, 1, 0, '<p>Three places hold everything that a visitor sees.</p>'),
  (2, 3, 1, 0, '<h2>The words</h2>
<p>Each page has numbered bodies: the headline, the lead and the text of this page are its bodies 1, 2 and 3. Authors <a href="/torvex/">change a draft</a>, and visitors see it once it is published.</p>
<h2>The look</h2>
<p>The frame around every page is the base template <code>baseTemplates/{{site}}/{{lang}}/page.html</code>. What stands inside comes from the content templates in <code>contentTemplates/{{site}}/{{lang}}</code>. Colours and sizes are in <code>wwwroot/stylesheets/{{site}}/{{lang}}/site.css</code>.</p>
<h2>The settings</h2>
<p>The address of the server and of the database stand in <code>torvex.toml</code>. All else is kept in the database.</p>'),
  (3, 1, 1, 0, 'About'),
  (3, 2, 1, 0, '<p>Say who stands behind {{titleHtml}}.</p>'),
  (3, 3, 1, 0, '<p>Visitors look here for a name, an address and a way to reach you. Many countries ask for it by law.</p>');

-- The root is open to everybody (group 1); the pages below it ask their parent (group 0).
insert into TORVEX_PAGES_GROUPS_DESIGN (pageId, groupId) values (1, 1), (2, 0), (3, 0);

insert into TORVEX_PAGES_METADATA_DESIGN (metaData_pageId, metaData_id, metaData_inherited, metaData_value) values
  (1, 6, 0, 'The website of {{titleHtml}}'),
  (2, 6, 0, 'Where the words, the look and the settings of this site are'),
  (3, 6, 0, 'Who stands behind {{titleHtml}}');

-- All of it is published.
insert into TORVEX_PAGES_LIVE
  (pageId, nodeId, orderId, site, lang, parent, type, title, template, stylesheet, baseTemplate, application,
   navigation, onlineFrom, onlineTo, breadcrumb, dynMenu, online, author, authoringDate, publisher, publishingDate)
select
   pageId, nodeId, orderId, site, lang, parent, type, title, template, stylesheet, baseTemplate, application,
   navigation, '00000000', '99999999', breadcrumb, dynMenu, 1, editor, editingDate, editor, editingDate
from TORVEX_PAGES_DESIGN;

insert into TORVEX_BODIES_LIVE (pageId, bodyId, bodyType, feedId, bodyText)
select pageId, bodyId, bodyType, feedId, bodyText from TORVEX_BODIES_DESIGN;

insert into TORVEX_PAGES_GROUPS_LIVE (pageId, groupId)
select pageId, groupId from TORVEX_PAGES_GROUPS_DESIGN;

insert into TORVEX_PAGES_METADATA_LIVE (metaData_pageId, metaData_id, metaData_inherited, metaData_value)
select metaData_pageId, metaData_id, metaData_inherited, metaData_value from TORVEX_PAGES_METADATA_DESIGN;
