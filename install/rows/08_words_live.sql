-- What authors are told about their drafts, and about each other, in English and German.

insert into TORVEX_INTERFACE_VOCAB (lang_label, lang_vocab1, lang_vocab2) values
  (5400, 'This text is too long to be kept as a draft. Save it.', 'Dieser Text ist zu lang, um als Entwurf aufgehoben zu werden. Speichern Sie ihn.'),
  (5401, 'Too many of your texts aren''t saved. Save or discard some of them.', 'Zu viele Ihrer Texte sind nicht gespeichert. Speichern oder verwerfen Sie einige davon.'),
  (5402, 'Nobody else has this page.', 'Niemand sonst hat diese Seite.'),
  (5403, 'Who has this page isn''t here at the moment.', 'Wer diese Seite hat, ist gerade nicht da.')
on conflict (lang_label) do nothing;
