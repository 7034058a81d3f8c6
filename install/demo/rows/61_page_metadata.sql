-- Values of the meta tags. Every page has a row for each tag of its site; a page
-- without a value of its own takes the one of its parent.

insert into TORVEX_PAGES_METADATA_DESIGN
  (metaData_pageId, metaData_id, metaData_inherited, metaData_value)
values
  (1, 1, 0, 'Lindhaven Botanic Garden, public programme'),
  (1, 2, 0, ''),
  (1, 3, 0, 'Lindhaven Foundation'),
  (1, 4, 0, 'botanic garden, palm house, glasshouse, alpine plants, guided walks, Lindhaven'),
  (1, 5, 0, 'Botanic garden'),
  (1, 6, 0, 'Lindhaven Botanic Garden: three glasshouses, an alpine garden and a night garden on five hectares by the river. Open every day.'),
  (4, 6, 0, 'Opening hours of the garden and the glasshouses, ticket prices and concessions.'),
  (5, 6, 0, 'By tram, bicycle, car or on foot to Lindhaven Botanic Garden.'),
  (7, 6, 0, 'The glasshouses, the alpine garden and the night garden of Lindhaven.'),
  (8, 6, 0, 'The Palm House of 1891: date palm, cycads, tree ferns and the giant water lily.'),
  (9, 6, 0, 'Cushion plants, gentians and edelweiss in four mountain ranges at Lindhaven.'),
  (10, 6, 0, 'Plants that flower after sunset, and the moths that visit them.'),
  (11, 6, 0, 'Exhibitions, walks and workshops in Lindhaven Botanic Garden.'),
  (12, 6, 0, 'Paper gardens: ninety botanical drawings from the Lindhaven collection.'),
  (13, 6, 0, 'The programme of the anniversary year 2037.'),
  (14, 6, 0, 'Orchid week in the glasshouses, March 2025.'),
  (16, 6, 0, 'How a date palm came to Lindhaven in a laundry basket and reached the roof.'),
  (17, 6, 0, 'Forty winters of snowdrop counts in the woodland of Lindhaven.'),
  (18, 6, 0, 'Seeds, bulbs and books from the garden.'),
  (19, 6, 0, 'Helping in the garden.'),
  (101, 1, 0, 'Botanischer Garten Lindhaven, Öffentlichkeitsarbeit'),
  (101, 2, 0, ''),
  (101, 3, 0, 'Stiftung Lindhaven'),
  (101, 4, 0, 'botanischer Garten, Palmenhaus, Gewächshaus, Alpenpflanzen, Führungen, Lindhaven'),
  (101, 5, 0, 'Botanischer Garten'),
  (101, 6, 0, 'Botanischer Garten Lindhaven: drei Gewächshäuser, ein Alpinum und ein Nachtgarten auf fünf Hektar am Fluss. Täglich geöffnet.'),
  (104, 6, 0, 'Öffnungszeiten des Gartens und der Gewächshäuser, Eintrittspreise und Ermäßigungen.'),
  (105, 6, 0, 'Mit Straßenbahn, Fahrrad, Auto oder zu Fuß zum Botanischen Garten Lindhaven.'),
  (107, 6, 0, 'Die Gewächshäuser, das Alpinum und der Nachtgarten in Lindhaven.'),
  (108, 6, 0, 'Das Palmenhaus von 1891: Dattelpalme, Palmfarne, Baumfarne und die Riesenseerose.'),
  (109, 6, 0, 'Polsterpflanzen, Enziane und Edelweiß aus vier Gebirgen in Lindhaven.'),
  (110, 6, 0, 'Pflanzen, die nach Sonnenuntergang blühen, und die Falter, die sie besuchen.'),
  (111, 6, 0, 'Ausstellungen, Führungen und Kurse im Botanischen Garten Lindhaven.'),
  (112, 6, 0, 'Gärten auf Papier: neunzig botanische Zeichnungen aus der Lindhavener Sammlung.'),
  (116, 6, 0, 'Wie eine Dattelpalme in einem Wäschekorb nach Lindhaven kam und bis ans Dach wuchs.'),
  (201, 7, 0, 'Lindhaven Plant Institute'),
  (201, 8, 0, ''),
  (201, 9, 0, 'Lindhaven Foundation'),
  (201, 10, 0, 'botany, herbarium, seed bank, alpine plants, climate, long-term plots'),
  (201, 11, 0, 'Plant research'),
  (201, 12, 0, 'Lindhaven Plant Institute: long-term research on wild plants, a herbarium of 612,000 sheets and a seed bank.'),
  (203, 12, 0, 'How alpine plants climb in a warmer climate: seven plots, 28 years.'),
  (204, 12, 0, 'Seed dormancy and the bricked-up sample of 1923.'),
  (206, 12, 0, 'The Lindhaven herbarium: 612,000 sheets, loans and visits.'),
  (207, 12, 0, 'How to use the reading room and borrow herbarium sheets.'),
  (208, 12, 0, 'Papers, data sets and reports of the Lindhaven Plant Institute.'),
  (209, 12, 0, 'A field course on mountain plants.'),
  (301, 7, 0, 'Pflanzeninstitut Lindhaven'),
  (301, 8, 0, ''),
  (301, 9, 0, 'Stiftung Lindhaven'),
  (301, 10, 0, 'Botanik, Herbarium, Saatgutbank, Alpenpflanzen, Klima, Dauerflächen'),
  (301, 11, 0, 'Pflanzenforschung'),
  (301, 12, 0, 'Pflanzeninstitut Lindhaven: Langzeitforschung an Wildpflanzen, ein Herbarium mit 612.000 Bögen und eine Saatgutbank.'),
  (303, 12, 0, 'Wie Alpenpflanzen im wärmeren Klima bergauf wandern: sieben Flächen, 28 Jahre.'),
  (304, 12, 0, 'Samenruhe und die eingemauerte Probe von 1923.'),
  (306, 12, 0, 'Das Lindhavener Herbarium: 612.000 Bögen, Besuche und Ausleihe.'),
  (308, 12, 0, 'Aufsätze, Datensätze und Berichte des Pflanzeninstituts Lindhaven.');

insert into TORVEX_PAGES_METADATA_DESIGN
  (metaData_pageId, metaData_id, metaData_inherited, metaData_value)
select a.pageId, b.metaData_id, 1, ''
from TORVEX_PAGES_DESIGN a
inner join TORVEX_METADATA b on b.metaData_site = a.site
where not exists (
  select 1 from TORVEX_PAGES_METADATA_DESIGN c
  where c.metaData_pageId = a.pageId and c.metaData_id = b.metaData_id);
