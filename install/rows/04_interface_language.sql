-- The first language of the authoring interface, and the fallback of every other. Its texts stand in lang_vocab1.
insert into TORVEX_INTERFACE_LANGUAGES (id, lang_id, lang_name, lang_default, lang_enabled) values
  (1, 'en', 'English', 1, 1);
