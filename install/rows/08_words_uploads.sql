-- What authors are told of files that they upload, in English and German.
insert into TORVEX_INTERFACE_VOCAB (lang_label, lang_vocab1, lang_vocab2) values
  (5380, 'The program that sends this file speaks another version of the protocol.', 'Das Programm, das diese Datei sendet, spricht eine andere Fassung des Protokolls.'),
  (5381, 'This file goes on at another place than the one that was sent.', 'Diese Datei geht an einer anderen Stelle weiter als der gesendeten.'),
  (5382, 'A file may have {size} MB at most.', 'Eine Datei darf höchstens {size} MB haben.'),
  (5383, 'This file isn''t of a kind that is kept here, or not of the kind that its name says.', 'Diese Datei ist von keiner Art, die hier aufbewahrt wird, oder nicht von der, die ihr Name sagt.'),
  (5384, 'You have too much on its way. Try again when some of it has arrived.', 'Von Ihnen ist zu viel unterwegs. Versuchen Sie es wieder, wenn ein Teil angekommen ist.'),
  (5385, 'This folder is gone.', 'Diesen Ordner gibt es nicht mehr.'),
  (5386, 'A folder beside it has this name.', 'Ein Ordner daneben hat diesen Namen.'),
  (5387, 'A name is missing.', 'Es fehlt ein Name.'),
  (5388, 'This file is gone.', 'Diese Datei gibt es nicht mehr.'),
  (5389, 'Another file of this folder has this title.', 'Eine andere Datei dieses Ordners hat diesen Titel.'),
  (5390, 'A title is missing.', 'Es fehlt ein Titel.'),
  (5391, 'The two files are of different types.', 'Die beiden Dateien sind von verschiedener Art.'),
  (5392, 'A file of this name is there already.', 'Eine Datei dieses Namens gibt es schon.'),
  (5393, 'The file or the folder is gone.', 'Die Datei oder den Ordner gibt es nicht mehr.'),
  (5394, 'A file of that folder has this title; give it another one first.', 'Eine Datei jenes Ordners hat diesen Titel; geben Sie ihr erst einen anderen.')
on conflict (lang_label) do nothing;
