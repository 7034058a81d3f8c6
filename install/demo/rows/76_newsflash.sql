-- Newsflashes of the home pages: 1 shows the entries of the message board that are marked for it, with pictures, and
-- 2 the coming dates.

insert into TORVEX_TEMPLATES
  (tpl_id, tpl_site, tpl_lang, tpl_name, tpl_description, tpl_filename, tpl_system, lock)
values
  (45, 'bg', 'en', 'Newsflash with pictures', 'Cards with picture, title and text', 'newsflash-cards.html', 1, 0),
  (46, 'bg', 'en', 'Newsflash of dates', 'A list of dates', 'newsflash-dates.html', 1, 0),
  (47, 'bg', 'de', 'Newsflash with pictures', 'Cards with picture, title and text', 'newsflash-cards.html', 1, 0),
  (48, 'bg', 'de', 'Newsflash of dates', 'A list of dates', 'newsflash-dates.html', 1, 0),
  (49, 'ri', 'en', 'Newsflash with pictures', 'Cards with picture, title and text', 'newsflash-cards.html', 1, 0),
  (50, 'ri', 'en', 'Newsflash of dates', 'A list of dates', 'newsflash-dates.html', 1, 0),
  (51, 'ri', 'de', 'Newsflash with pictures', 'Cards with picture, title and text', 'newsflash-cards.html', 1, 0),
  (52, 'ri', 'de', 'Newsflash of dates', 'A list of dates', 'newsflash-dates.html', 1, 0);

insert into TORVEX_NEWSFLASH_DESIGN
  (nf_Id, id, title, site, lang, itemOrder, itemLength, numberOfItems, mode, templateId, imageAlignment, imageWidth, imageHeight, deleted, modified)
values
  (1, 1, 'Latest news', 'bg', 'en', 1, 110, 3, 'M', 45, 5, 600, 0, 0, 0),
  (2, 2, 'Coming dates', 'bg', 'en', 2, 0, 4, 'A', 46, 4, 0, 0, 0, 0),
  (3, 1, 'Neuestes', 'bg', 'de', 1, 110, 3, 'M', 47, 5, 600, 0, 0, 0),
  (4, 2, 'Nächste Termine', 'bg', 'de', 2, 0, 4, 'A', 48, 4, 0, 0, 0, 0),
  (5, 1, 'Latest news', 'ri', 'en', 1, 110, 3, 'M', 49, 5, 600, 0, 0, 0),
  (6, 2, 'Coming dates', 'ri', 'en', 2, 0, 4, 'A', 50, 4, 0, 0, 0, 0),
  (7, 1, 'Neuestes', 'ri', 'de', 1, 110, 3, 'M', 51, 5, 600, 0, 0, 0),
  (8, 2, 'Nächste Termine', 'ri', 'de', 2, 0, 4, 'A', 52, 4, 0, 0, 0, 0);

insert into TORVEX_NEWSFLASH_CATEGORIES_DESIGN (nf_Id, msgB_Id) values
  (1, 1),
  (1, 2),
  (1, 3),
  (1, 4),
  (1, 5),
  (1, 6),
  (2, 3),
  (3, 11),
  (3, 12),
  (3, 13),
  (3, 14),
  (3, 15),
  (3, 16),
  (4, 13),
  (5, 21),
  (5, 22),
  (5, 23),
  (5, 24),
  (6, 23),
  (7, 31),
  (7, 32),
  (7, 33),
  (7, 34),
  (8, 33);

insert into TORVEX_NEWSFLASH_LIVE
  (nf_Id, id, title, site, lang, itemOrder, itemLength, numberOfItems, mode, templateId, imageAlignment, imageWidth, imageHeight, deleted, modified)
select nf_Id, id, title, site, lang, itemOrder, itemLength, numberOfItems, mode, templateId, imageAlignment, imageWidth, imageHeight, deleted, modified
from TORVEX_NEWSFLASH_DESIGN;

insert into TORVEX_NEWSFLASH_CATEGORIES_LIVE (nf_Id, msgB_Id)
select nf_Id, msgB_Id from TORVEX_NEWSFLASH_CATEGORIES_DESIGN;
