-- The words of visitors' second factors, in English and German, as far as those of the authors' don't serve: first those
-- of the pages, then those of the administration.
insert into TORVEX_INTERFACE_VOCAB (lang_label, lang_vocab1, lang_vocab2) values
  (5970, 'Log in', 'Anmelden'),
  (5971, 'This website asks for a second factor. Set it up now, and you are logged in.', 'Diese Website verlangt einen zweiten Faktor. Richten Sie ihn jetzt ein, dann sind Sie angemeldet.'),
  (5972, 'Print this page, or write the codes down.', 'Drucken Sie diese Seite, oder schreiben Sie die Codes ab.'),
  (5973, 'Go on', 'Weiter'),
  (5974, 'Log in first. Then you can set up a second factor here, or change yours.', 'Melden Sie sich zuerst an. Dann können Sie hier einen zweiten Faktor einrichten oder Ihren ändern.'),
  (5975, 'This form can’t be taken any more. Please try again.', 'Dieses Formular kann nicht mehr angenommen werden. Bitte versuchen Sie es nochmals.'),
  (5976, 'There were too many attempts. Wait {count} seconds, then try again.', 'Das waren zu viele Versuche. Warten Sie {count} Sekunden und versuchen Sie es dann nochmals.'),
  (5977, 'To the login', 'Zur Anmeldung'),
  (5978, 'This website asks for a second factor, so it stays.', 'Diese Website verlangt einen zweiten Faktor, darum bleibt er.'),
  (5979, 'There are no second factors on this website.', 'Auf dieser Website gibt es keine zweiten Faktoren.'),
  (5980, 'To the home page', 'Zur Startseite'),
  (5981, 'Second factor of visitors: off, offered to those who log in, or demanded of them', 'Zweiter Faktor der Besucher: aus, allen angeboten, die sich anmelden, oder von ihnen verlangt'),
  (5982, 'Second factor since {date}.', 'Zweiter Faktor seit {date}.'),
  (5983, 'No second factor.', 'Kein zweiter Faktor.'),
  (5984, 'Off', 'Aus'),
  (5985, 'Offered', 'Angeboten'),
  (5986, 'Demanded', 'Verlangt'),
  (5987, 'Too many codes were wrong. Log in again with name and password.', 'Zu viele Codes waren falsch. Melden Sie sich nochmals mit Name und Passwort an.'),
  (5988, 'The forms of a visitor’s second factor, on a page of its application', 'Die Formulare des zweiten Faktors eines Besuchers, auf einer Seite seiner Anwendung')
on conflict (lang_label) do nothing;
