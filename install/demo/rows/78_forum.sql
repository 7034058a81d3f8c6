-- The garden's discussion forum: an application page for each language whose templates lie in its system folder,
-- and one among the members' pages for the volunteers alone, which shares the templates.

insert into TORVEX_APPLICATIONS
  (app_id, app_name, app_description, app_href_public, app_href_admin, app_href_publish, app_param_public,
   app_param_admin, app_system, lock)
values
  (351, 'Discussion forum', 'Topics and reactions of visitors', '/torvex_forum/', '/torvex/torvex_forum/forums.asp', '',
   '', '', 1, '');

insert into TORVEX_TEMPLATES
  (tpl_id, tpl_site, tpl_lang, tpl_name, tpl_description, tpl_filename, tpl_system, lock)
values
  (351, 'bg', 'en', 'Forums', 'The list of forums', 'forum-forums.html', 0, 0),
  (352, 'bg', 'en', 'Forum topics', 'The topics of a forum', 'forum-topics.html', 0, 0),
  (353, 'bg', 'en', 'Forum topic', 'A topic with its reactions', 'forum-reactions.html', 0, 0),
  (354, 'bg', 'en', 'Forum form', 'The form to begin a topic or to react', 'forum-reaction.html', 0, 0),
  (355, 'bg', 'de', 'Forums', 'The list of forums', 'forum-forums.html', 0, 0),
  (356, 'bg', 'de', 'Forum topics', 'The topics of a forum', 'forum-topics.html', 0, 0),
  (357, 'bg', 'de', 'Forum topic', 'A topic with its reactions', 'forum-reactions.html', 0, 0),
  (358, 'bg', 'de', 'Forum form', 'The form to begin a topic or to react', 'forum-reaction.html', 0, 0);

insert into TORVEX_PAGES_DESIGN
  (pageId, nodeId, orderId, site, lang, parent, type, title, template, stylesheet, baseTemplate, application, app_param_public, app_system_folder, navigation, previous, next, up, onlineFrom, onlineTo, breadcrumb, dynMenu, loginPage, editStatus, editor, editingDate, lockStatus, deleteStatus, approveStatus)
values
  (351, 'bg.en.09', 9, 'bg', 'en', 'bg.en', 'A', 'Forum', 2, 0, 0, 351, '', 0, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (352, 'bg.en.09.99', 99, 'bg', 'en', 'bg.en.09', 'F', 'Templates of the forum', 4, 0, 0, -1, '', -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (353, 'bg.en.09.99.01', 1, 'bg', 'en', 'bg.en.09.99', 'P', 'forums', 351, 0, 0, -1, '', -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (354, 'bg.en.09.99.02', 2, 'bg', 'en', 'bg.en.09.99', 'P', 'topics', 352, 0, 0, -1, '', -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (355, 'bg.en.09.99.03', 3, 'bg', 'en', 'bg.en.09.99', 'P', 'reactions', 353, 0, 0, -1, '', -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (356, 'bg.en.09.99.04', 4, 'bg', 'en', 'bg.en.09.99', 'P', 'reaction', 354, 0, 0, -1, '', -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (357, 'bg.de.07', 7, 'bg', 'de', 'bg.de', 'A', 'Forum', 7, 0, 0, 351, '', 0, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (358, 'bg.de.07.99', 99, 'bg', 'de', 'bg.de.07', 'F', 'Vorlagen des Forums', 9, 0, 0, -1, '', -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (359, 'bg.de.07.99.01', 1, 'bg', 'de', 'bg.de.07.99', 'P', 'forums', 355, 0, 0, -1, '', -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (360, 'bg.de.07.99.02', 2, 'bg', 'de', 'bg.de.07.99', 'P', 'topics', 356, 0, 0, -1, '', -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (361, 'bg.de.07.99.03', 3, 'bg', 'de', 'bg.de.07.99', 'P', 'reactions', 357, 0, 0, -1, '', -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (362, 'bg.de.07.99.04', 4, 'bg', 'de', 'bg.de.07.99', 'P', 'reaction', 358, 0, 0, -1, '', -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0),
  (363, 'bg.en.08.06', 6, 'bg', 'en', 'bg.en.08', 'A', 'Volunteers’ talk', 0, 0, 0, 351, 'forumId=3', 352, 'A', -1, -1, -1, '', '', '1', '0', 44, 'P', 1, '2026-05-04 10:00:00', 0, 0, 0);

insert into TORVEX_PAGES_GROUPS_DESIGN (pageId, groupId)
select pageId, 0 from TORVEX_PAGES_DESIGN where pageId between 351 and 362;
insert into TORVEX_PAGES_GROUPS_DESIGN (pageId, groupId) values (363, 3);

-- The headline and the lead of the list, and the headlines of the other templates, which the browser shows.
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(353, 1, 1, 0, 'Forum'),
(353, 2, 1, 0, '<p>Talk about the garden with those who walk in it and those who dig in it. Everybody may read and write. You need no account, only a name.</p>'),
(359, 1, 1, 0, 'Forum'),
(359, 2, 1, 0, '<p>Sprechen Sie über den Garten mit denen, die in ihm spazieren, und denen, die in ihm graben. Alle dürfen lesen und schreiben. Sie brauchen kein Konto, nur einen Namen.</p>');

-- Posts of the gardeners' forums wait for a moderator. The mails go to an address that doesn't exist.
insert into TORVEX_FORUM_DESIGN
  (forum_id, forum_site, forum_lang, forum_reference, forum_name, forum_desc, forum_hotPeriod, forum_reactionsOnline, forum_archiveAfter, forum_archiveVisible, forum_sendEmail, forum_emailFrom, forum_emailSubject, forum_pageSize, forum_askName, forum_askEmail, forum_emailTo, forum_words, forum_deleted, forum_modified)
values
  (1, 'bg', 'en', 'forum-1', 'Garden talk', 'What you have seen, heard and smelled in the garden.', 7, 1, 365, 1, 1, 'forum@lindhaven.example', 'Lindhaven: Garden talk', 10, 2, 0, 'basil.crane@lindhaven.example', 'casino,lottery,viagra', 0, 0),
  (2, 'bg', 'en', 'forum-2', 'Ask the gardeners', 'Questions about your own garden. Our gardeners look at each one before it appears, and answer on Thursdays.', 7, 0, 0, 1, 1, 'forum@lindhaven.example', 'Lindhaven: Ask the gardeners', 10, 2, 1, 'basil.crane@lindhaven.example', 'casino,lottery,viagra', 0, 0),
  (3, 'bg', 'en', 'forum-3', 'Volunteers’ talk', 'For those who help in the beds.', 7, 1, 0, 1, 1, 'forum@lindhaven.example', 'Lindhaven: Volunteers’ talk', 10, 2, 0, 'basil.crane@lindhaven.example', 'casino,lottery,viagra', 0, 0),
  (4, 'bg', 'de', 'forum-4', 'Gartengespräche', 'Was Sie im Garten gesehen, gehört und gerochen haben.', 7, 1, 365, 1, 1, 'forum@lindhaven.example', 'Lindhaven: Gartengespräche', 10, 2, 0, 'basil.crane@lindhaven.example', 'casino,lottery,viagra', 0, 0),
  (5, 'bg', 'de', 'forum-5', 'Fragen an die Gärtner', 'Fragen zum eigenen Garten. Unsere Gärtner sehen jede an, bevor sie erscheint, und antworten donnerstags.', 7, 0, 0, 1, 1, 'forum@lindhaven.example', 'Lindhaven: Fragen an die Gärtner', 10, 2, 1, 'basil.crane@lindhaven.example', 'casino,lottery,viagra', 0, 0);

insert into TORVEX_FORUM_LIVE
  (forum_id, forum_site, forum_lang, forum_reference, forum_name, forum_desc, forum_hotPeriod, forum_reactionsOnline, forum_archiveAfter, forum_archiveVisible, forum_sendEmail, forum_emailFrom, forum_emailSubject, forum_pageSize, forum_askName, forum_askEmail, forum_emailTo, forum_words)
select forum_id, forum_site, forum_lang, forum_reference, forum_name, forum_desc, forum_hotPeriod, forum_reactionsOnline, forum_archiveAfter, forum_archiveVisible, forum_sendEmail, forum_emailFrom, forum_emailSubject, forum_pageSize, forum_askName, forum_askEmail, forum_emailTo, forum_words
from TORVEX_FORUM_DESIGN where forum_id between 1 and 5;

-- What was written in the last thirty days.
insert into TORVEX_FORUM_TOPICS (topic_forumId, topic_id, topic_dateCreation, topic_title, topic_author, topic_online, topic_text)
with
  days (distance, day, weekday) as (values
    {{days}}),
  written (forum, id, distance, title, author, online, text) as (values
    (1, 1, 6, 'Snowdrops in November?', 'Maud P.', 1, 'Behind the bench at the river gate something is pushing up that looks very much like a snowdrop. It is November. Has anybody else seen it, or should I have my glasses checked?'),
    (1, 2, 12, 'A robin that follows the gardeners', 'Theo', 1, 'For a week now a robin has been working the beds with the two gardeners at the orangery, a spade’s length behind them. It seems to have learned the sound of the wheelbarrow. If you want to see it, come before ten.'),
    (1, 3, 21, 'Best bench for reading', 'Anselm K.', 1, 'My candidates: the one under the copper beech (shade until four), the one behind the alpine house (no wind, warm stone), and the iron one by the lily pond, which is pretty and cold.

Which is yours?'),
    (1, 4, 27, 'Dogs on a short lead', 'Hanne', 1, 'Could we agree that a short lead is one on which the dog can’t reach the tulips? Thank you from somebody who planted them.'),
    (2, 1, 9, 'What is eating my box hedge?', 'Ruth B.', 1, 'Webs inside the hedge, bare twigs, small green caterpillars with black heads. The hedge is forty years old and I would like it to reach fifty.'),
    (2, 2, 17, 'Pruning a quince', 'Olaf', 1, 'We took over a garden with an old quince that has not been cut for years. Can I take it back hard in one winter, or does it want time?'),
    (2, 3, 2, 'Orchid without flowers', 'Lia', 0, 'My orchid has had leaves only for two years. It stands at a north window. Is that the reason?'),
    (3, 1, 4, 'Who has the key of the tool shed?', 'Rowan', 1, 'The second key is not on its hook. Please look in your jackets. The shed is open on Saturday from eight, with the first key, which is mine.'),
    (3, 2, 15, 'Leaf mould: this year’s heap', 'Hazel', 1, 'The wire cage behind the glasshouses is full. From now on please start the second one, and only oak, beech and hornbeam: plane leaves take three years.'),
    (4, 1, 5, 'Schneeglöckchen im November?', 'Maria H.', 1, 'Hinter der Bank am Flusstor schiebt sich etwas aus der Erde, das sehr nach einem Schneeglöckchen aussieht. Im November. Hat es noch jemand gesehen?'),
    (4, 2, 14, 'Das Rotkehlchen der Gärtner', 'Jonas', 1, 'Seit einer Woche arbeitet ein Rotkehlchen mit den Gärtnern an der Orangerie, immer einen Spatenstich hinter ihnen. Wer es sehen will, kommt am besten vor zehn.'),
    (4, 3, 24, 'Die beste Bank zum Lesen', 'Edda', 1, 'Meine Favoriten: unter der Blutbuche (Schatten bis vier) und hinter dem Alpinenhaus (windstill, warmer Stein). Welche ist eure?'),
    (5, 1, 8, 'Was frisst meinen Buchs?', 'Rita B.', 1, 'Gespinste im Innern, kahle Zweige, kleine grüne Raupen mit schwarzem Kopf. Die Hecke ist vierzig Jahre alt, und ich möchte, dass sie fünfzig wird.'))
select w.forum, w.id, d.day, w.title, w.author, w.online, w.text
from written w inner join days d on d.distance = w.distance;

insert into TORVEX_FORUM_REACTIONS (reaction_forumId, reaction_topicId, reaction_id, reaction_reference, reaction_date, reaction_title, reaction_author, reaction_online, reaction_text)
with
  days (distance, day, weekday) as (values
    {{days}}),
  written (forum, topic, id, place, distance, title, author, online, text) as (values
    (1, 1, 1, '01', 6, 'It is one', 'Theo', 1, 'I went to look. Three leaves, grey-green, flat: a snowdrop, and in a hurry.'),
    (1, 1, 2, '01.01', 5, 'An autumn species', 'Basil Crane', 1, 'Some of them do this by nature: Galanthus reginae-olgae flowers from October. We planted a dozen by the river gate in 2019, and this is the first year in which they take part.'),
    (1, 1, 3, '01.01.01', 5, 'Twelve?', 'Maud P.', 1, 'Then I have eleven still to find. Thank you, my glasses are well.'),
    (1, 1, 4, '01.01.01.01', 3, 'I count nine', 'Anselm K.', 1, 'Nine as of this morning. Two of them under the leaves of the hellebore, so step with care.'),
    (1, 1, 5, '01.02', 4, 'Photo', 'Lia', 1, 'I have put a photo here: https://pictures.example/snowdrop-november (no registration needed).'),
    (1, 1, 6, '02', 4, 'Mild winters', 'Ruth B.', 1, 'At home the hazel has begun as well. The counting at the institute says that everything is a fortnight earlier than in my school days.'),
    (1, 1, 7, '02.01', 3, 'Where to read about it', 'Theo', 1, 'There is a story about the counting on this site, under Stories.'),
    (1, 2, 1, '01', 11, 'Two of them now', 'Hanne', 1, 'Since Sunday there are two, and they don’t like each other. The gardeners keep to the middle.'),
    (1, 2, 2, '01.01', 10, 'A question of beds', 'Theo', 1, 'One has the left side of the path, the other the right. The wheelbarrow decides.'),
    (1, 2, 3, '02', 8, 'Please don’t feed', 'Reed Amsel', 1, 'They find enough behind the spades, and bread is bad for them. Looking is free.'),
    (1, 3, 1, '01', 20, 'Lily pond, with a cushion', 'Maud P.', 1, 'A cushion makes it the best of the three. In June the frogs read along.'),
    (1, 3, 2, '02', 19, 'Palm House, upper gallery', 'Olaf', 1, 'In winter there is only one answer: upper gallery, second bench. Nineteen degrees, and the rain is outside.'),
    (1, 3, 3, '02.01', 18, 'Mind the sprinklers', 'Iris Falk', 1, 'They come on at three. We are trying to teach them to wait for the end of a chapter.'),
    (2, 1, 1, '01', 8, 'Box tree moth', 'Basil Crane', 1, 'These are caterpillars of the box tree moth. Pick off what you can reach, and put a net over the rest. If you spray, use Bacillus thuringiensis, in the evening, on the inside of the hedge.

Do it again in ten days. A hedge that still shows green in the wood will come back.'),
    (2, 1, 2, '01.01', 7, 'How often in a year?', 'Ruth B.', 1, 'Is once enough, or do they come again?'),
    (2, 1, 3, '01.01.01', 7, 'Three times', 'Basil Crane', 1, 'Three generations here: April, July and September. Put it in the calendar, they have it in theirs.'),
    (2, 2, 1, '01', 16, 'Three winters', 'Basil Crane', 1, 'Take a third each winter, the crossing branches first. Cut hard in one go it answers with a broom of shoots and no fruit.'),
    (3, 1, 1, '01', 3, 'Found', 'Flora', 1, 'In the pocket of the green raincoat, which is nobody’s. It is back on its hook.'),
    (4, 1, 1, '01', 5, 'Es ist eines', 'Jonas', 1, 'Ich habe nachgesehen: drei Blätter, graugrün, flach. Ein Schneeglöckchen, und es hat es eilig.'),
    (4, 1, 2, '01.01', 4, 'Eine Herbstart', 'Heide Lorenz', 1, 'Galanthus reginae-olgae blüht von Oktober an. Wir haben 2019 ein Dutzend am Flusstor gesetzt, und dieses Jahr machen sie zum ersten Mal mit.'),
    (4, 1, 3, '01.01.01', 4, 'Ein Dutzend?', 'Maria H.', 1, 'Dann fehlen mir noch elf. Danke!'),
    (4, 2, 1, '01', 12, 'Inzwischen zwei', 'Edda', 1, 'Seit Sonntag sind es zwei, und sie mögen sich nicht. Die Gärtner halten sich in der Mitte.'),
    (4, 3, 1, '01', 22, 'Im Winter das Palmenhaus', 'Jonas', 1, 'Obere Galerie, zweite Bank. Neunzehn Grad, und der Regen bleibt draußen.'),
    (5, 1, 1, '01', 7, 'Buchsbaumzünsler', 'Heide Lorenz', 1, 'Das sind Raupen des Buchsbaumzünslers. Absammeln, was sich erreichen lässt, und ein Netz über den Rest. Eine Hecke, die im Holz noch grün ist, treibt wieder aus.'))
select w.forum, w.topic, w.id, w.place, d.day, w.title, w.author, w.online, w.text
from written w inner join days d on d.distance = w.distance;

-- And long ago.
insert into TORVEX_FORUM_TOPICS (topic_forumId, topic_id, topic_dateCreation, topic_title, topic_author, topic_text) values
    (1, 5, '20240914', 'Apples of the old orchard', 'Anselm K.', 'Who remembers the name of the striped apple at the wall? My grandmother called it Sunday red.'),
    (1, 6, '20250322', 'Lost: one blue mitten', 'Lia', 'Left hand, knitted, between the Alpine garden and the tram. The right one is waiting.'),
    (4, 4, '20250322', 'Verloren: ein blauer Fäustling', 'Lina', 'Links, gestrickt, zwischen Alpinum und Straßenbahn. Der rechte wartet.');

insert into TORVEX_FORUM_REACTIONS
  (reaction_forumId, reaction_topicId, reaction_id, reaction_reference, reaction_date, reaction_title, reaction_author,
   reaction_text, reaction_online)
values
    (1, 5, 1, '01', '20240916', 'Danziger Kantapfel', 'Basil Crane', 'By your description a Danziger Kantapfel. The tree by the wall is one, grafted in 1931.', 1);

update TORVEX_FORUM_TOPICS set topic_lastDate =
  (select max(reaction_date) from TORVEX_FORUM_REACTIONS
   where reaction_forumId = topic_forumId and reaction_topicId = topic_id and reaction_online = 1);
