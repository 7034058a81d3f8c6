-- The languages of the authoring interface. The first is the fallback of every other. Their texts stand in
-- lang_vocab1 and lang_vocab2.
insert into TORVEX_INTERFACE_LANGUAGES (id, lang_id, lang_name, lang_default, lang_enabled) values
  (1, 'en', 'English', 1, 1),
  (2, 'de', 'Deutsch', 0, 1);
