-- Fills the lists of the demo with :records of each: logins, visitors' accounts, documents, templates.
create table filled as with recursive n (x) as (select 0 union all select x + 1 from n where x < :records - 1) select x from n;
insert into TORVEX_LOGINS (username, password, name, job, email, validFrom, validTo, date, time)
select 'x' || x, '', 'Author x' || x, 'Editor', '', '', '', '', '' from filled;
insert into TORVEX_USERS (username, password, firstname, lastname, validFrom, validTo)
select 'x' || x, '', 'Vera', 'Visitor', '', '' from filled;
insert into TORVEX_DOCUMENTS (doc_site, doc_fldId, doc_title, doc_filename, doc_size, doc_type)
select 'bg', '', 'Leaflet x' || x, 'grown/x' || x || '.pdf', 1000, 'application/pdf' from filled;
insert into TORVEX_TEMPLATES (tpl_site, tpl_lang, tpl_name, tpl_description, tpl_filename)
select 'bg', 'en', 'Template x' || x, '', 'x' || x || '.tpl' from filled;
drop table filled;
