-- The words of the modules' administration, in English and German: first what is told when a change is refused.
insert into TORVEX_INTERFACE_VOCAB (lang_label, lang_vocab1, lang_vocab2) values
  (6400, 'This isn''t there any more.', 'Das gibt es nicht mehr.'),
  (6401, 'There is no such website.', 'Diese Website gibt es nicht.'),
  (6402, 'A title is missing.', 'Ein Titel fehlt.'),
  (6403, 'That isn''t one of the choices, or no such day.', 'Das gibt es nicht zur Auswahl, oder diesen Tag gibt es nicht.'),
  (6404, 'Choose a template for modules of this website.', 'Wählen Sie eine Vorlage für Module dieser Website.'),
  (6405, 'That is no mail address, or there is none to send from.', 'Das ist keine Mailadresse, oder es gibt keine zum Senden.'),
  (6406, 'Another newsflash has this number.', 'Ein anderer Newsflash hat diese Nummer.'),
  (6407, 'Another newsflash has this title.', 'Ein anderer Newsflash hat diesen Titel.'),
  (6408, 'This contribution isn''t there any more.', 'Diesen Beitrag gibt es nicht mehr.'),
  (6409, 'No place is left here for another category.', 'Hier ist kein Platz mehr für eine weitere Kategorie.'),
  (6410, 'This category isn''t there any more.', 'Diese Kategorie gibt es nicht mehr.'),
  (6411, 'A catalogue elsewhere needs its server and its share.', 'Ein Katalog anderswo braucht seinen Server und seine Freigabe.');
