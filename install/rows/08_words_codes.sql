-- What the interface for programs says to people when a request comes to nothing, in English and German. The places in
-- braces are filled when it is told.

-- Of any request.
insert into TORVEX_INTERFACE_VOCAB (lang_label, lang_vocab1, lang_vocab2) values
  (5000, 'This request could not be understood.', 'Diese Anfrage war nicht zu verstehen.'),
  (5001, 'You are no longer logged in.', 'Sie sind nicht mehr angemeldet.'),
  (5003, 'There is nothing of this name.', 'Unter diesem Namen gibt es nichts.'),
  (5004, 'The argument “{argument}” can''t be given over the network.', 'Das Argument „{argument}“ kann nicht über das Netz angegeben werden.'),
  (5005, 'This request doesn''t come from this site''s own pages. Load the page anew.', 'Diese Anfrage kommt nicht von einer Seite dieser Website. Laden Sie die Seite neu.'),
  (5006, '“{argument}” doesn''t fit: {needed}', '„{argument}“ passt nicht: {needed}'),
  (5007, 'This address doesn''t take this kind of request.', 'Diese Adresse nimmt solche Anfragen nicht an.'),
  (5008, 'That wasn''t possible; nothing was changed.', 'Das war nicht möglich; es wurde nichts geändert.'),
  (5009, 'This has been changed meanwhile.', 'Das wurde inzwischen geändert.'),
  (5010, 'Too much was sent at once.', 'Es wurde zu viel auf einmal gesendet.'),
  (5011, 'This kind of data isn''t taken here.', 'Diese Art von Daten wird hier nicht angenommen.'),
  (5012, 'Too many requests in a short time. Wait {seconds} seconds, then try again.', 'Zu viele Anfragen in kurzer Zeit. Warten Sie {seconds} Sekunden und versuchen Sie es dann noch einmal.'),
  (5013, 'There were too many failed logins. Wait {seconds} seconds, then try again.', 'Es gab zu viele fehlgeschlagene Anmeldungen. Warten Sie {seconds} Sekunden und versuchen Sie es dann noch einmal.'),
  (5014, 'That didn''t work; nothing was changed. Reference {reference}', 'Das hat nicht funktioniert; es wurde nichts geändert. Nummer {reference}'),
  (5015, 'Too many requests are arriving just now. Try again in a few seconds.', 'Gerade treffen zu viele Anfragen ein. Versuchen Sie es in ein paar Sekunden noch einmal.'),
  (5016, 'This request could not be answered.', 'Diese Anfrage konnte nicht beantwortet werden.'),
  (5017, 'A batch has at most {most} calls.', 'Ein Stapel hat höchstens {most} Aufrufe.'),
  (5018, 'This access token isn''t valid.', 'Dieses Zugriffstoken ist nicht gültig.'),
  (5019, 'This access token doesn''t allow that.', 'Dieses Zugriffstoken erlaubt das nicht.'),
  (5022, 'That didn''t work; nothing was changed.', 'Das hat nicht funktioniert; es wurde nichts geändert.'),
  (5023, 'Somebody else', 'Jemand anderes')
on conflict (lang_label) do nothing;

-- What a value needs that doesn't fit.
insert into TORVEX_INTERFACE_VOCAB (lang_label, lang_vocab1, lang_vocab2) values
  (5024, 'It is missing.', 'Es fehlt.'),
  (5025, 'Nothing of this name is expected here.', 'Unter diesem Namen wird hier nichts erwartet.'),
  (5026, 'It is given twice.', 'Es ist zweimal angegeben.'),
  (5027, 'It must be a number.', 'Es muss eine Zahl sein.'),
  (5028, 'It must be a whole number from -32768 to 32767.', 'Es muss eine ganze Zahl von -32768 bis 32767 sein.'),
  (5029, 'It must be true or false.', 'Es muss true oder false sein.'),
  (5030, 'It must be a date (2026-06-15T12:00:00).', 'Es muss ein Datum sein (2026-06-15T12:00:00).'),
  (5031, 'It must be -2 (the system''s encoding), -1 (Unicode) or 0 (ANSI).', 'Es muss -2 (Kodierung des Systems), -1 (Unicode) oder 0 (ANSI) sein.'),
  (5032, 'It must be a text.', 'Es muss ein Text sein.'),
  (5033, 'It must be a text, a number, true, false or null.', 'Es muss ein Text, eine Zahl, true, false oder null sein.'),
  (5034, 'It must be a text in UTF-8 without NUL.', 'Es muss ein Text in UTF-8 ohne NUL sein.'),
  (5035, 'A number is too large.', 'Eine Zahl ist zu groß.'),
  (5036, 'It can only be read.', 'Es kann nur gelesen werden.'),
  (5037, 'Days must be yyyymmdd.', 'Tage müssen die Form JJJJMMTT haben.'),
  (5040, 'It must be an object.', 'Es muss ein Objekt sein.'),
  (5041, 'It must be a list.', 'Es muss eine Liste sein.'),
  (5042, 'It must be a text or a list of texts.', 'Es muss ein Text oder eine Liste von Texten sein.'),
  (5043, 'One of "do", "get", "set" is missing.', 'Eines von "do", "get", "set" fehlt.'),
  (5044, 'It must be {"is": value} or {"sha256": text}.', 'Es muss {"is": Wert} oder {"sha256": Text} sein.'),
  (5050, 'It must be "images" or "documents".', 'Es muss "images" oder "documents" sein.'),
  (5051, 'It must be the code of a site.', 'Es muss der Code einer Website sein.'),
  (5052, 'It must be the number of a folder.', 'Es muss die Nummer eines Ordners sein.'),
  (5053, 'It must be the name of a file without a path.', 'Es muss der Name einer Datei ohne Pfad sein.'),
  (5054, 'The file must have something in it.', 'In der Datei muss etwas stehen.')
on conflict (lang_label) do nothing;

-- What operations refuse: pages.
insert into TORVEX_INTERFACE_VOCAB (lang_label, lang_vocab1, lang_vocab2) values
  (5100, '{holder} has this page since {since}.', '{holder} hat diese Seite seit {since}.'),
  (5101, 'This page is approved; take that back to change it.', 'Diese Seite ist freigegeben; nehmen Sie das zurück, um sie zu ändern.'),
  (5102, '{holder} still has the page.', '{holder} hat die Seite noch.'),
  (5103, 'There is nothing to approve.', 'Es gibt nichts freizugeben.'),
  (5104, 'An approved page can''t be marked.', 'Eine freigegebene Seite kann nicht zum Löschen vorgemerkt werden.'),
  (5105, 'It is approved.', 'Sie ist freigegeben.'),
  (5106, '{holder} has the page; your text is kept.', '{holder} hat die Seite; Ihr Text bleibt erhalten.'),
  (5107, 'It was approved meanwhile; your text is kept.', 'Sie wurde inzwischen freigegeben; Ihr Text bleibt erhalten.'),
  (5108, 'This page is gone; your text is kept.', 'Diese Seite gibt es nicht mehr; Ihr Text bleibt erhalten.'),
  (5109, '{holder} has the page.', '{holder} hat die Seite.'),
  (5110, 'This page is gone.', 'Diese Seite gibt es nicht mehr.'),
  (5111, 'The source is gone.', 'Die Quelle gibt es nicht mehr.'),
  (5112, '{holder} has it checked out.', '{holder} hat sie ausgecheckt.'),
  (5113, 'It isn''t approved.', 'Sie ist nicht freigegeben.'),
  (5114, 'It is gone.', 'Das gibt es nicht mehr.'),
  (5115, 'Its parent “{parent}” isn''t live yet.', 'Die Seite darüber, „{parent}“, ist noch nicht online.'),
  (5116, 'This page is approved.', 'Diese Seite ist freigegeben.'),
  (5117, 'It was never published; there is nothing to go back to.', 'Sie wurde nie veröffentlicht; es gibt keinen früheren Stand.'),
  (5118, 'The page above is gone.', 'Die Seite darüber gibt es nicht mehr.'),
  (5119, 'No place is left here.', 'Hier ist kein Platz mehr.'),
  (5120, 'This website is gone.', 'Diese Website gibt es nicht mehr.'),
  (5121, 'A neighbour has this title.', 'Eine Nachbarseite hat diesen Titel.'),
  (5122, 'There is no such kind of page.', 'Diese Art von Seite gibt es nicht.'),
  (5123, 'Choose a template.', 'Wählen Sie eine Vorlage.'),
  (5124, 'Choose an application.', 'Wählen Sie eine Anwendung.'),
  (5125, 'Choose a base template.', 'Wählen Sie eine Basisvorlage.'),
  (5126, 'Choose a stylesheet.', 'Wählen Sie ein Stylesheet.'),
  (5127, 'No such page.', 'Diese Seite gibt es nicht.'),
  (5128, 'No such date.', 'Diesen Tag gibt es nicht.'),
  (5129, 'The file of the template can''t be read.', 'Die Datei der Vorlage ist nicht lesbar.'),
  (5130, 'Choose a folder right below the system branch.', 'Wählen Sie einen Ordner direkt unter dem Systemzweig.'),
  (5131, 'There is a system branch.', 'Es gibt schon einen Systemzweig.'),
  (5132, 'System pages stay apart.', 'Systemseiten bleiben unter sich.'),
  (5133, 'No free title.', 'Kein freier Titel.'),
  (5134, 'Somebody works in this website.', 'Jemand arbeitet in dieser Website.'),
  (5135, 'Not into itself.', 'Nicht in sich selbst.')
on conflict (lang_label) do nothing;

-- Logins.
insert into TORVEX_INTERFACE_VOCAB (lang_label, lang_vocab1, lang_vocab2) values
  (5140, 'This login is gone.', 'Diese Anmeldung gibt es nicht mehr.'),
  (5141, 'This name is taken.', 'Dieser Name ist vergeben.'),
  (5142, 'The name is missing.', 'Der Name fehlt.'),
  (5143, 'The password is missing.', 'Das Passwort fehlt.'),
  (5144, 'The full name is missing.', 'Der volle Name fehlt.'),
  (5145, '“sa” can''t be removed.', '„sa“ kann nicht entfernt werden.'),
  (5146, '{holder} has it open.', '{holder} hat es offen.'),
  (5147, 'Name or password is wrong, or this login isn''t valid today.', 'Name oder Passwort ist falsch, oder diese Anmeldung gilt heute nicht.'),
  (5148, 'Logging in isn''t allowed from this address.', 'Von dieser Adresse aus ist die Anmeldung nicht erlaubt.'),
  (5149, 'Somebody is logged in as you from {address} since {since}.', 'Jemand ist von {address} aus seit {since} unter Ihrem Namen angemeldet.'),
  (5150, 'This login isn''t a program''s.', 'Diese Anmeldung gehört keinem Programm.'),
  (5151, 'The name, the operations, the addresses or the last day can''t be used.', 'Der Name, die Operationen, die Adressen oder der letzte Tag sind nicht brauchbar.')
on conflict (lang_label) do nothing;

-- Websites and records.
insert into TORVEX_INTERFACE_VOCAB (lang_label, lang_vocab1, lang_vocab2) values
  (5160, 'Somebody works in it.', 'Jemand arbeitet darin.'),
  (5161, 'It still has pages.', 'Es gibt noch Seiten darin.'),
  (5162, 'It is the last one.', 'Es ist das letzte.'),
  (5163, 'It is still used.', 'Es wird noch verwendet.'),
  (5164, 'Pages still use it.', 'Seiten verwenden es noch.'),
  (5165, 'A newsflash uses it.', 'Eine Kurzmeldung verwendet es.'),
  (5166, 'A dynamic menu uses it.', 'Ein dynamisches Menü verwendet es.'),
  (5167, 'You work in it.', 'Sie arbeiten damit.'),
  (5168, 'It is the default.', 'Es ist die Voreinstellung.'),
  (5169, 'Others are logged in.', 'Andere sind angemeldet.'),
  (5170, 'Generate it first.', 'Erzeugen Sie sie zuerst.'),
  (5171, 'A category above isn''t live.', 'Eine Kategorie darüber ist nicht online.'),
  (5172, 'It is gone, or somebody has it open.', 'Das gibt es nicht mehr, oder jemand hat es offen.')
on conflict (lang_label) do nothing;
