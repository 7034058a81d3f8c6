-- Content templates, base templates and stylesheets, by site and language.

insert into TORVEX_TEMPLATES
  (tpl_id, tpl_site, tpl_lang, tpl_name, tpl_description, tpl_filename, tpl_system, lock)
values
  (1, 'bg', 'en', 'Home page', 'Hero, hours and prices, bands of teasers', 'home.html', 0, 0),
  (2, 'bg', 'en', 'Standard page', 'Headline, lead and text', 'page.html', 0, 0),
  (3, 'bg', 'en', 'Picture page', 'Headline, lead, picture and text, with facts in the margin', 'feature.html', 0, 0),
  (4, 'bg', 'en', 'Service page', 'Headline and text, not for search engines', 'service.html', 0, 0),
  (5, 'bg', 'en', 'Leaflet', 'One sheet to print, in columns', 'leaflet.html', 0, 0),
  (6, 'bg', 'de', 'Home page', 'Hero, hours and prices, bands of teasers', 'home.html', 0, 0),
  (7, 'bg', 'de', 'Standard page', 'Headline, lead and text', 'page.html', 0, 0),
  (8, 'bg', 'de', 'Picture page', 'Headline, lead, picture and text, with facts in the margin', 'feature.html', 0, 0),
  (9, 'bg', 'de', 'Service page', 'Headline and text, not for search engines', 'service.html', 0, 0),
  (10, 'ri', 'en', 'Home page', 'Hero, hours and prices, bands of teasers', 'home.html', 0, 0),
  (11, 'ri', 'en', 'Standard page', 'Headline, lead and text', 'page.html', 0, 0),
  (12, 'ri', 'en', 'Picture page', 'Headline, lead, picture and text, with facts in the margin', 'feature.html', 0, 0),
  (13, 'ri', 'en', 'Service page', 'Headline and text, not for search engines', 'service.html', 0, 0),
  (14, 'ri', 'de', 'Home page', 'Hero, hours and prices, bands of teasers', 'home.html', 0, 0),
  (15, 'ri', 'de', 'Standard page', 'Headline, lead and text', 'page.html', 0, 0),
  (16, 'ri', 'de', 'Picture page', 'Headline, lead, picture and text, with facts in the margin', 'feature.html', 0, 0),
  (17, 'ri', 'de', 'Service page', 'Headline and text, not for search engines', 'service.html', 0, 0),
  (18, 'bg', 'en', 'Login page', 'Headline, text and the login form', 'login.html', 0, 0),
  (19, 'bg', 'de', 'Login page', 'Headline, text and the login form', 'login.html', 0, 0);

insert into TORVEX_BASETEMPLATES
  (btpl_id, btpl_site, btpl_lang, btpl_name, btpl_description, btpl_filename, lock)
values
  (1, 'bg', 'en', 'Page', 'Menu, trail, neighbouring pages and footer', 'page.html', 0),
  (2, 'bg', 'en', 'Sheet', 'A sheet of paper without a menu', 'leaflet.html', 0),
  (3, 'bg', 'de', 'Page', 'Menu, trail, neighbouring pages and footer', 'page.html', 0),
  (4, 'ri', 'en', 'Page', 'Menu, trail, neighbouring pages and footer', 'page.html', 0),
  (5, 'ri', 'de', 'Page', 'Menu, trail, neighbouring pages and footer', 'page.html', 0);

insert into TORVEX_STYLESHEETS
  (ss_id, ss_site, ss_lang, ss_name, ss_description, ss_filename, lock)
values
  (1, 'bg', 'en', 'Garden', 'The look of all pages', 'garden.css', 0),
  (2, 'bg', 'en', 'Evening', 'The night garden: dusk on the page', 'evening.css', 0),
  (3, 'bg', 'en', 'Leaflet', 'For the sheet to print', 'leaflet.css', 0),
  (4, 'bg', 'de', 'Garden', 'The look of all pages', 'garden.css', 0),
  (5, 'bg', 'de', 'Evening', 'The night garden: dusk on the page', 'evening.css', 0),
  (6, 'ri', 'en', 'Institute', 'The look of all pages', 'institute.css', 0),
  (7, 'ri', 'de', 'Institute', 'The look of all pages', 'institute.css', 0);
