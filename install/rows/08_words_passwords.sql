-- What is said of passwords, and in the list of keys, in English and German.
insert into TORVEX_INTERFACE_VOCAB (lang_label, lang_vocab1, lang_vocab2) values
  (5890, 'This password is one of the 100,000 commonest: it would be guessed at once. Take another one.', 'Dieses Passwort ist eines der 100.000 häufigsten: Es wäre sofort erraten. Nehmen Sie ein anderes.'),
  (5891, 'In texts', 'In Texten'),
  (5892, 'show in the tree what Ctrl+K found', 'im Baum zeigen, was Strg+K gefunden hat'),
  (5893, 'Lines whose password is one of the 100,000 commonest: {lines}', 'Zeilen, deren Passwort eines der 100.000 häufigsten ist: {lines}')
on conflict (lang_label) do nothing;
