-- The texts of the authoring interface, in English and German. An upgrade runs this again: what is there stays as
-- its installation has it.

-- Words of every form.
insert into TORVEX_INTERFACE_VOCAB (lang_label, lang_vocab1, lang_vocab2) values
  (1, 'OK', 'OK'),
  (2, 'Cancel', 'Abbrechen'),
  (3, 'Do you want to continue?', 'Möchten Sie fortfahren?'),
  (4, 'This could not be done.', 'Das war nicht möglich.'),
  (5, 'Save', 'Speichern'),
  (6, 'New', 'Neu'),
  (7, 'Edit', 'Bearbeiten'),
  (8, 'Delete', 'Löschen'),
  (9, 'Close', 'Schließen'),
  (10, 'Back', 'Zurück'),
  (11, 'Yes', 'Ja'),
  (12, 'No', 'Nein'),
  (13, 'Search', 'Suchen'),
  (14, 'Preview', 'Vorschau'),
  (15, 'Publish', 'Veröffentlichen'),
  (16, 'Approve', 'Freigeben'),
  (17, 'Check out', 'Auschecken'),
  (18, 'Check in', 'Einchecken'),
  (19, 'Copy', 'Kopieren'),
  (20, 'Paste', 'Einfügen'),
  (21, 'Move', 'Verschieben'),
  (22, 'Undo', 'Rückgängig'),
  (23, 'Log in', 'Anmelden'),
  (24, 'Log out', 'Abmelden'),
  (25, 'Name', 'Name'),
  (26, 'Title', 'Titel'),
  (27, 'Description', 'Beschreibung'),
  (28, 'Date', 'Datum'),
  (29, 'Time', 'Uhrzeit'),
  (30, 'User name', 'Benutzername'),
  (31, 'Password', 'Passwort'),
  (32, 'Online', 'Online'),
  (33, 'Offline', 'Offline'),
  (34, 'From', 'Von'),
  (35, 'To', 'Bis'),
  (36, 'Website', 'Website'),
  (37, 'Language', 'Sprache'),
  (38, 'Page', 'Seite'),
  (39, 'Folder', 'Ordner'),
  (40, 'Filename', 'Dateiname'),
  (41, 'All', 'Alle'),
  (42, 'None', 'Keine'),
  (43, 'This is locked by another login.', 'Das ist durch eine andere Anmeldung gesperrt.'),
  (44, 'You are not logged in.', 'Sie sind nicht angemeldet.'),
  (45, 'You do not have the right to do this.', 'Dazu haben Sie nicht das Recht.'),
  (46, 'The changes have been saved.', 'Die Änderungen wurden gespeichert.'),
  (47, 'Do you really want to delete this?', 'Möchten Sie das wirklich löschen?'),
  (48, 'This name is already in use.', 'Dieser Name wird bereits verwendet.'),
  (49, 'This is in use and cannot be deleted.', 'Das wird verwendet und kann nicht gelöscht werden.')
on conflict (lang_label) do nothing;

-- Marks of links that lead nowhere, in the edit view.
insert into TORVEX_INTERFACE_VOCAB (lang_label, lang_vocab1, lang_vocab2) values
  (670, 'This page does not exist', 'Diese Seite gibt es nicht'),
  (671, 'This document does not exist', 'Dieses Dokument gibt es nicht'),
  (672, 'This page is offline', 'Diese Seite ist offline'),
  (673, 'No target has been chosen for this link', 'Für diesen Link wurde kein Ziel gewählt')
on conflict (lang_label) do nothing;

-- Forum moderation: hints of the title, the switch and the bin of a reaction, caption, status and question.
insert into TORVEX_INTERFACE_VOCAB (lang_label, lang_vocab1, lang_vocab2) values
  (1190, 'View or edit this reaction', 'Diesen Beitrag ansehen oder bearbeiten'),
  (2175, 'Switch on or off', 'Ein- oder ausschalten'),
  (2577, 'Topic', 'Thema'),
  (2578, 'The marked reactions and everything below them will be deleted.', 'Die markierten Beiträge und alles darunter werden gelöscht.'),
  (2579, 'The state of the reaction is being changed...', 'Der Zustand des Beitrags wird geändert...'),
  (2580, 'Mark or unmark for deletion', 'Zum Löschen markieren oder Markierung aufheben')
on conflict (lang_label) do nothing;

-- Names of what has none, and the word that is put behind the title of a copy. A title holds 50
-- characters, and the copy is refused at more than 43: the word may have four letters.
insert into TORVEX_INTERFACE_VOCAB (lang_label, lang_vocab1, lang_vocab2) values
  (1212, 'New folder', 'Neuer Ordner'),
  (2560, 'unknown', 'unbekannt'),
  (2581, 'copy', 'Kop.'),
  (2584, 'The file of this feed could not be read.', 'Die Datei dieses Feeds konnte nicht gelesen werden.'),
  (2587, 'Links are disabled in this view', 'Links sind in dieser Ansicht ausgeschaltet'),
  (2597, 'no title', 'ohne Titel')
on conflict (lang_label) do nothing;

-- Months, in full and short.
insert into TORVEX_INTERFACE_VOCAB (lang_label, lang_vocab1, lang_vocab2) values
  (2801, 'January', 'Januar'),
  (2802, 'February', 'Februar'),
  (2803, 'March', 'März'),
  (2804, 'April', 'April'),
  (2805, 'May', 'Mai'),
  (2806, 'June', 'Juni'),
  (2807, 'July', 'Juli'),
  (2808, 'August', 'August'),
  (2809, 'September', 'September'),
  (2810, 'October', 'Oktober'),
  (2811, 'November', 'November'),
  (2812, 'December', 'Dezember'),
  (2821, 'Jan', 'Jan'),
  (2822, 'Feb', 'Feb'),
  (2823, 'Mar', 'Mär'),
  (2824, 'Apr', 'Apr'),
  (2825, 'May', 'Mai'),
  (2826, 'Jun', 'Jun'),
  (2827, 'Jul', 'Jul'),
  (2828, 'Aug', 'Aug'),
  (2829, 'Sep', 'Sep'),
  (2830, 'Oct', 'Okt'),
  (2831, 'Nov', 'Nov'),
  (2832, 'Dec', 'Dez')
on conflict (lang_label) do nothing;

-- Pages of the server itself: logging in, errors, the shell, the statistics of a page.
insert into TORVEX_INTERFACE_VOCAB (lang_label, lang_vocab1, lang_vocab2) values
  (4000, 'Torvex', 'Torvex'),
  (4001, 'Log in to write and publish', 'Zum Schreiben und Veröffentlichen anmelden'),
  (4002, 'Name or password is wrong, or this login isn’t valid today.', 'Name oder Passwort ist falsch, oder diese Anmeldung gilt heute nicht.'),
  (4003, 'Logging in isn’t allowed from this address.', 'Von dieser Adresse aus ist das Anmelden nicht erlaubt.'),
  (4004, 'Somebody is logged in by this name at another address.', 'Unter diesem Namen ist jemand an einer anderen Adresse angemeldet.'),
  (4005, 'There were too many tries. Wait a moment, then try again.', 'Das waren zu viele Versuche. Warten Sie einen Augenblick und versuchen Sie es dann erneut.'),
  (4006, 'Show the password', 'Passwort zeigen'),
  (4007, 'Something went wrong', 'Etwas ist schiefgegangen'),
  (4008, 'Nothing was changed. If it happens again, tell whoever runs this site the number below.', 'Es wurde nichts geändert. Wenn es wieder geschieht, nennen Sie dem Betreiber die Nummer unten.'),
  (4009, 'Reference', 'Nummer'),
  (4010, 'To the start page', 'Zur Startseite'),
  (4011, 'Loading...', 'Wird geladen...'),
  (4012, 'This interface needs JavaScript. Switch it on in your browser, then load the page again.', 'Diese Oberfläche braucht JavaScript. Schalten Sie es im Browser ein und laden Sie die Seite neu.'),
  (4013, 'Skip to the content', 'Zum Inhalt springen'),
  (4014, 'Views of this page', 'Aufrufe dieser Seite'),
  (4015, 'Day', 'Tag'),
  (4016, 'Views', 'Aufrufe'),
  (4017, 'Total', 'Summe'),
  (4018, 'Print', 'Drucken')
on conflict (lang_label) do nothing;

-- Titles of the administration menu: 3000 and the number of the entry.
insert into TORVEX_INTERFACE_VOCAB (lang_label, lang_vocab1, lang_vocab2) values
  (3010, 'Websites', 'Websites'),
  (3011, 'Sites', 'Sites'),
  (3012, 'Languages', 'Sprachen'),
  (3020, 'Logins and rights', 'Anmeldungen und Rechte'),
  (3021, 'Logins', 'Anmeldungen'),
  (3022, 'Roles and rights', 'Rollen und Rechte'),
  (3023, 'Logins online', 'Angemeldete Autoren'),
  (3030, 'Visitors', 'Besucher'),
  (3031, 'Groups', 'Gruppen'),
  (3032, 'Users', 'Benutzer'),
  (3040, 'Applications', 'Anwendungen'),
  (3050, 'Interface', 'Oberfläche'),
  (3051, 'Interface languages', 'Sprachen der Oberfläche'),
  (3052, 'Vocabulary', 'Wortschatz'),
  (3060, 'System', 'System'),
  (3061, 'Settings', 'Einstellungen'),
  (3062, 'Load balancing servers', 'Server zur Lastverteilung'),
  (3063, 'Audit trail', 'Protokoll'),
  (3064, 'Search catalogue', 'Suchkatalog'),
  (3070, 'My settings', 'Meine Einstellungen'),
  (3110, 'Media', 'Medien'),
  (3111, 'Images', 'Bilder'),
  (3112, 'Documents', 'Dokumente'),
  (3120, 'Metadata tags', 'Metadaten'),
  (3210, 'Website', 'Website'),
  (3211, 'Website title', 'Titel der Website'),
  (3212, 'Checked out pages', 'Ausgecheckte Seiten'),
  (3213, 'Statistics', 'Statistik'),
  (3220, 'Design', 'Gestaltung'),
  (3221, 'Content templates', 'Inhaltsvorlagen'),
  (3222, 'Base templates', 'Basisvorlagen'),
  (3223, 'Stylesheets', 'Stylesheets'),
  (3230, 'Feeds', 'Feeds'),
  (3231, 'HTML feeds', 'HTML-Feeds'),
  (3232, 'XML feeds', 'XML-Feeds'),
  (3240, 'Modules', 'Module'),
  (3241, 'Message board', 'Nachrichtenbrett'),
  (3242, 'Newsflashes', 'Kurznachrichten'),
  (3243, 'Discussion forum', 'Diskussionsforum'),
  (3244, 'Dynamic menus', 'Dynamische Menüs'),
  (3245, 'Site search', 'Suche der Website')
on conflict (lang_label) do nothing;

-- What the forum says to visitors, in the language of the page.
insert into TORVEX_INTERFACE_VOCAB (lang_label, lang_vocab1, lang_vocab2) values
  (4200, 'Please give your post a title.', 'Bitte geben Sie Ihrem Beitrag einen Titel.'),
  (4201, 'The title is too long; at most 120 characters fit.', 'Der Titel ist zu lang; höchstens 120 Zeichen haben Platz.'),
  (4202, 'Please write something.', 'Bitte schreiben Sie etwas.'),
  (4203, 'The text is too long; at most 8000 characters fit. You can send the rest as a second post.', 'Der Text ist zu lang; höchstens 8000 Zeichen haben Platz. Den Rest können Sie als zweiten Beitrag senden.'),
  (4204, 'Please tell your name; any name will do.', 'Bitte nennen Sie Ihren Namen; irgendeiner genügt.'),
  (4205, 'The name is too long; at most 60 characters fit.', 'Der Name ist zu lang; höchstens 60 Zeichen haben Platz.'),
  (4206, 'Please give your e-mail address. It is not shown.', 'Bitte geben Sie Ihre E-Mail-Adresse an. Sie wird nicht gezeigt.'),
  (4207, 'This is no e-mail address. It looks like name@example.org.', 'Das ist keine E-Mail-Adresse. Sie sieht aus wie name@example.org.'),
  (4208, 'The field that is to stay empty was filled in. Please send your post once more.', 'Das Feld, das leer bleiben soll, war ausgefüllt. Bitte senden Sie Ihren Beitrag noch einmal.'),
  (4209, 'We could not tell that this form is ours. Please send your post once more.', 'Wir konnten nicht erkennen, dass dieses Formular von uns ist. Bitte senden Sie Ihren Beitrag noch einmal.'),
  (4210, 'This page was open for very long. Please send your post once more.', 'Diese Seite war sehr lange offen. Bitte senden Sie Ihren Beitrag noch einmal.'),
  (4211, 'That was very quick. Please wait a moment and send your post once more.', 'Das ging sehr schnell. Bitte warten Sie einen Augenblick und senden Sie Ihren Beitrag noch einmal.'),
  (4212, 'There were many posts from here in a short time. Please wait ten minutes and send your post once more.', 'Von hier kamen in kurzer Zeit viele Beiträge. Bitte warten Sie zehn Minuten und senden Sie Ihren Beitrag noch einmal.'),
  (4213, 'This forum is closed. Your text is still here, so that you can keep it.', 'Dieses Forum ist geschlossen. Ihr Text steht noch hier, damit Sie ihn sichern können.'),
  (4214, 'This topic has been removed meanwhile. You can begin a new one with your text.', 'Dieses Thema wurde inzwischen entfernt. Sie können mit Ihrem Text ein neues beginnen.'),
  (4215, 'The post that you answer has been removed meanwhile. You can send your text as an answer to the topic.', 'Der Beitrag, auf den Sie antworten, wurde inzwischen entfernt. Sie können Ihren Text als Antwort auf das Thema senden.'),
  (4216, 'There is no room left here. You can begin a new topic with your text.', 'Hier ist kein Platz mehr. Sie können mit Ihrem Text ein neues Thema beginnen.'),
  (4217, 'Your post could not be kept. Please send it once more in a few minutes.', 'Ihr Beitrag konnte nicht gespeichert werden. Bitte senden Sie ihn in einigen Minuten noch einmal.'),
  (4218, 'New post', 'Neuer Beitrag'),
  (4219, 'It waits for a moderator.', 'Er wartet auf die Moderation.'),
  (4220, 'Everybody can read it.', 'Alle können ihn lesen.')
on conflict (lang_label) do nothing;
