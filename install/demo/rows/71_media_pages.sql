-- Pages that hand out media: maps, pictures for the press, data. And the German twins of the pages with feeds.

insert into TORVEX_PAGES_DESIGN
  (pageId, nodeId, orderId, site, lang, parent, type, title, template, stylesheet, baseTemplate, application, navigation, previous, next, up, onlineFrom, onlineTo, breadcrumb, dynMenu, loginPage, editStatus, editor, editingDate, lockStatus, deleteStatus, approveStatus)
values
  (312, 'bg.en.01.01.03', 3, 'bg', 'en', 'bg.en.01.01', 'P', 'Maps and leaflets', 0, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 2, '2026-05-11 09:20:00', 0, 0, 0),
  (313, 'bg.de.01.01.03', 3, 'bg', 'de', 'bg.de.01.01', 'P', 'Pläne und Faltblätter', 0, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 4, '2026-05-11 11:05:00', 0, 0, 0),
  (314, 'bg.en.02.04', 4, 'bg', 'en', 'bg.en.02', 'P', 'Pictures for the press', 2, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 2, '2026-05-12 14:40:00', 0, 0, 0),
  (315, 'bg.de.02.04', 4, 'bg', 'de', 'bg.de.02', 'P', 'Pressebilder', 7, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 4, '2026-05-12 16:10:00', 0, 0, 0),
  (316, 'bg.de.03.04', 4, 'bg', 'de', 'bg.de.03', 'P', 'Aushang', 0, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 4, '2026-05-12 16:45:00', 0, 0, 0),
  (317, 'ri.de.01.03', 3, 'ri', 'de', 'ri.de.01', 'P', 'Samentausch', 15, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 4, '2026-05-13 10:15:00', 0, 0, 0),
  (318, 'ri.en.01.03', 3, 'ri', 'en', 'ri.en.01', 'P', 'Data and methods', 11, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 3, '2026-05-13 15:30:00', 0, 0, 0),
  (319, 'ri.de.01.04', 4, 'ri', 'de', 'ri.de.01', 'P', 'Daten und Methoden', 15, 0, 0, -1, 'A', -1, -1, -1, '', '', '1', '0', -1, 'P', 4, '2026-05-14 09:50:00', 0, 0, 0);

-- bg.en.01.01.03  Maps and leaflets
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(312, 1, 1, 0, 'Maps and leaflets'),
(312, 2, 1, 0, '<p>For those who like to know the way before they set out, and for those who would rather have something to look for.</p>'),
(312, 3, 1, 0, '<h2>The map</h2>
<figure class="plate">
  <img src="/images/bg/garden-map.svg" width="640" height="320" alt="Map of the garden. The Palm House stands in the west, the alpine garden in the north-east, the night garden by the river in the south-east.">
  <figcaption>The same map hangs at both gates, with the step-free paths in green.</figcaption>
</figure>
<p><a href="file(002/garden-map.pdf)" target="_self">Map of the garden to print (PDF)</a></p>
<h2>A walk of one hour</h2>
<p>Two kilometres, eight stops, and an answer to the question what to see first: <a href="page(23)">the leaflet</a> prints on one sheet.</p>
<h2>For children</h2>
<p>The satchel at the gate holds a lens, a map and <a href="file(Twelve riddles)" target="_self">twelve riddles (PDF)</a>. They can be solved with a pencil, a nose and patience. Whoever reads German can take <a href="file(Zwölf Rätsel)" target="_self">the same twelve in German (PDF)</a> and compare.</p>');

-- bg.de.01.01.03  Pläne und Faltblätter
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(313, 1, 1, 0, 'Pläne und Faltblätter'),
(313, 2, 1, 0, '<p>Für alle, die den Weg gern vorher kennen, und für alle, die lieber etwas zu suchen haben.</p>'),
(313, 3, 1, 0, '<h2>Der Plan</h2>
<figure class="plate">
  <img src="/images/bg/garden-map.svg" width="640" height="320" alt="Plan des Gartens. Das Palmenhaus steht im Westen, das Alpinum im Nordosten, der Nachtgarten am Fluss im Südosten.">
  <figcaption>Derselbe Plan hängt an beiden Toren, die stufenlosen Wege sind dort grün. Beschriftet ist er auf Englisch.</figcaption>
</figure>
<p><a href="file(002/garden-map.pdf)" target="_self">Plan des Gartens zum Ausdrucken (PDF)</a></p>
<h2>Für Kinder</h2>
<p>In der Tasche am Tor stecken eine Lupe, ein Plan und <a href="file(Zwölf Rätsel)" target="_self">zwölf Rätsel (PDF)</a>. Sie lassen sich mit einem Stift, einer Nase und Geduld lösen.</p>');

-- bg.en.02.04  Pictures for the press
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(314, 1, 1, 0, 'Pictures for the press'),
(314, 2, 1, 0, '<p>Free to print and to post with a report about the garden. Please name the source: Lindhaven Botanic Garden.</p>'),
(314, 3, 1, 0, '<h2>Under glass</h2>
<ul class="cards">
  <li class="card">
    <img src="/images/bg/002/001/palm-house.jpg" width="900" height="540" alt="A tall date palm whose crown fills the dome" loading="lazy">
    <div>
      <h3><a href="/images/bg/002/001/palm-house.jpg">Palm House, from the gallery</a></h3>
      <p>Number 1888-0007 under the dome of 1891.</p>
    </div>
  </li>
  <li class="card">
    <img src="/images/bg/002/001/glasshouse.jpg" width="900" height="675" alt="A glasshouse with a dome and two wings among beds and trees" loading="lazy">
    <div>
      <h3><a href="/images/bg/002/001/glasshouse.jpg">Glasshouse in the evening</a></h3>
      <p>The middle one of the three houses.</p>
    </div>
  </li>
</ul>
<h2>Outdoors</h2>
<ul class="cards">
  <li class="card">
    <img src="/images/bg/002/002/alpine-garden.jpg" width="900" height="540" alt="Cushion plants in flower between rocks, mountains behind" loading="lazy">
    <div>
      <h3><a href="/images/bg/002/002/alpine-garden.jpg">Alpine garden in May</a></h3>
      <p>Gentians and cushions on the limestone side.</p>
    </div>
  </li>
  <li class="card">
    <img src="/images/bg/002/002/night-garden.jpg" width="900" height="540" alt="White flowers and moths in the moonlight" loading="lazy">
    <div>
      <h3><a href="/images/bg/002/002/night-garden.jpg">Night garden at ten</a></h3>
      <p>Moonflowers and their visitors.</p>
    </div>
  </li>
  <li class="card">
    <img src="/images/bg/002/002/snowdrops.jpg" width="900" height="540" alt="A row of snowdrops in the last snow between bare trunks" loading="lazy">
    <div>
      <h3><a href="/images/bg/002/002/snowdrops.jpg">Snowdrops between the benches</a></h3>
      <p>Counted since 1981.</p>
    </div>
  </li>
</ul>
<p>Something larger, or something else? Write to <a href="mailto:press@lindhaven.example">press@lindhaven.example</a>.</p>');

-- bg.de.02.04  Pressebilder
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(315, 1, 1, 0, 'Pressebilder'),
(315, 2, 1, 0, '<p>Zum Abdruck und zur Veröffentlichung im Netz frei, wenn über den Garten berichtet wird. Bitte nennen Sie als Quelle: Botanischer Garten Lindhaven.</p>'),
(315, 3, 1, 0, '<h2>Unter Glas</h2>
<ul class="cards">
  <li class="card">
    <img src="/images/bg/002/001/palm-house.jpg" width="900" height="540" alt="Eine hohe Dattelpalme, deren Krone die Kuppel ausfüllt" loading="lazy">
    <div>
      <h3><a href="/images/bg/002/001/palm-house.jpg">Das Palmenhaus, von der Galerie</a></h3>
      <p>Nummer 1888-0007 unter der Kuppel von 1891.</p>
    </div>
  </li>
  <li class="card">
    <img src="/images/bg/002/001/glasshouse.jpg" width="900" height="675" alt="Ein Gewächshaus mit Kuppel und zwei Flügeln zwischen Beeten und Bäumen" loading="lazy">
    <div>
      <h3><a href="/images/bg/002/001/glasshouse.jpg">Gewächshaus am Abend</a></h3>
      <p>Das mittlere der drei Häuser.</p>
    </div>
  </li>
</ul>
<h2>Im Freien</h2>
<ul class="cards">
  <li class="card">
    <img src="/images/bg/002/002/alpine-garden.jpg" width="900" height="540" alt="Blühende Polsterpflanzen zwischen Felsen, dahinter Berge" loading="lazy">
    <div>
      <h3><a href="/images/bg/002/002/alpine-garden.jpg">Das Alpinum im Mai</a></h3>
      <p>Enziane und Polster auf der Kalkseite.</p>
    </div>
  </li>
  <li class="card">
    <img src="/images/bg/002/002/night-garden.jpg" width="900" height="540" alt="Weiße Blüten und Falter im Mondlicht" loading="lazy">
    <div>
      <h3><a href="/images/bg/002/002/night-garden.jpg">Der Nachtgarten um zehn</a></h3>
      <p>Mondwinden und ihre Gäste.</p>
    </div>
  </li>
  <li class="card">
    <img src="/images/bg/002/002/snowdrops.jpg" width="900" height="540" alt="Schneeglöckchen im letzten Schnee zwischen kahlen Stämmen" loading="lazy">
    <div>
      <h3><a href="/images/bg/002/002/snowdrops.jpg">Schneeglöckchen zwischen den Bänken</a></h3>
      <p>Gezählt seit 1981.</p>
    </div>
  </li>
</ul>
<p>Größer oder etwas anderes? Schreiben Sie an <a href="mailto:presse@lindhaven.example">presse@lindhaven.example</a>.</p>');

-- bg.de.03.04  Aushang
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(316, 1, 1, 0, 'Aushang'),
(316, 2, 1, 0, '<p>Was die Gärtnerinnen und Gärtner diese Woche ans Brett gehängt haben.</p>'),
(316, 3, 2, 2, '<p>Das Brett wird gerade erneuert. Bitte schauen Sie später wieder vorbei.</p>');

-- ri.de.01.03  Samentausch
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(317, 1, 1, 0, 'Samentausch'),
(317, 2, 1, 0, '<p>Samen, die wir dieses Jahr abgeben können, geradewegs aus der Liste der Saatgutbank. Schreiben Sie uns mit der Nummer.</p>'),
(317, 3, 3, 2, '<p>Die Liste wird gerade erneuert. Bitte schauen Sie später wieder vorbei.</p>');

-- ri.en.01.03  Data and methods
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(318, 1, 1, 0, 'Data and methods'),
(318, 2, 1, 0, '<p>What we count is free for everyone to count again. All tables are plain text, and each has its method beside it.</p>'),
(318, 3, 1, 0, '<h2>Tables</h2>
<div class="table" tabindex="0" role="region" aria-label="Tables to download">
<table>
  <thead><tr><th scope="col">Table</th><th scope="col">Years</th><th scope="col">Belongs to</th></tr></thead>
  <tbody>
    <tr><td><a href="file(Survey plots 1998 to 2025)" target="_self">Species of the seven plots (CSV)</a></td><td>1998 to 2025</td><td><a href="page(203)">Plants on the move</a></td></tr>
    <tr><td><a href="file(001/germination-2000-2025.csv)" target="_self">Germination of the bottles (CSV)</a></td><td>2000 to 2025</td><td><a href="page(204)">Why seeds wait</a></td></tr>
    <tr><td><a href="file(001/first-snowdrops-1981-2021.csv)" target="_self">First snowdrops (CSV)</a></td><td>1981 to 2021</td><td><a href="page(17)">Counting snowdrops</a></td></tr>
  </tbody>
</table>
</div>
<h2>How it is done</h2>
<p><a href="file(001/001/plots-method.txt)" target="_self">How the plots are counted (text)</a> fits on one page and has not changed since 1998. It is also to be had <a href="file(001/001/flaechen-methode.txt)" target="_self">in German (text)</a>.</p>
<figure class="plate">
  <img src="/images/ri/001/male-fern-1907.jpg" width="540" height="600" alt="A pressed fern on a herbarium sheet with label, colour scale and bar code" loading="lazy">
  <figcaption>A sheet as it is measured: with a scale, a strip of colours and a number.</figcaption>
</figure>
<h2>Terms</h2>
<p>Figures and data may be used under CC BY 4.0, with the name of the Institute and the year. If you find a mistake, you find a name on this page: <a href="mailto:data@lindhaven.example">data@lindhaven.example</a>.</p>');

-- ri.de.01.04  Daten und Methoden
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(319, 1, 1, 0, 'Daten und Methoden'),
(319, 2, 1, 0, '<p>Was wir zählen, darf jeder nachzählen. Alle Tabellen sind reiner Text, und zu jeder gehört ihre Methode.</p>'),
(319, 3, 1, 0, '<h2>Tabellen</h2>
<div class="table" tabindex="0" role="region" aria-label="Tabellen zum Herunterladen">
<table>
  <thead><tr><th scope="col">Tabelle</th><th scope="col">Jahre</th><th scope="col">Gehört zu</th></tr></thead>
  <tbody>
    <tr><td><a href="file(ri/transect-1998-2025.csv)" target="_self">Arten der sieben Flächen (CSV)</a></td><td>1998 bis 2025</td><td><a href="page(303)">Pflanzen auf dem Weg nach oben</a></td></tr>
    <tr><td><a href="file(001/germination-2000-2025.csv)" target="_self">Keimung aus den Flaschen (CSV)</a></td><td>2000 bis 2025</td><td><a href="page(304)">Warum Samen warten</a></td></tr>
    <tr><td><a href="file(001/first-snowdrops-1981-2021.csv)" target="_self">Erste Schneeglöckchen (CSV)</a></td><td>1981 bis 2021</td><td><a href="page(17)" hreflang="en">Counting snowdrops (englisch)</a></td></tr>
  </tbody>
</table>
</div>
<h2>Wie es gemacht wird</h2>
<p><a href="file(001/001/flaechen-methode.txt)" target="_self">Wie auf den Flächen gezählt wird (Text)</a>, steht auf einer Seite und hat sich seit 1998 nicht geändert.</p>
<figure class="plate">
  <img src="/images/ri/001/male-fern-1907.jpg" width="540" height="600" alt="Ein gepresster Farn auf einem Herbarbogen mit Etikett, Farbskala und Strichcode" loading="lazy">
  <figcaption>Ein Bogen, wie er vermessen wird: mit Maßstab, Farbstreifen und Nummer.</figcaption>
</figure>
<h2>Bedingungen</h2>
<p>Zahlen und Daten dürfen unter CC BY 4.0 verwendet werden, mit dem Namen des Instituts und dem Jahr. Wer einen Fehler findet, schreibt an <a href="mailto:daten@lindhaven.example">daten@lindhaven.example</a>.</p>');

insert into TORVEX_PAGES_METADATA_DESIGN
  (metaData_pageId, metaData_id, metaData_inherited, metaData_value)
values
  (312, 6, 0, 'The map of Lindhaven Botanic Garden to print, a walk of one hour, and twelve riddles for children.'),
  (313, 6, 0, 'Der Plan des Botanischen Gartens Lindhaven zum Ausdrucken und zwölf Rätsel für Kinder.'),
  (314, 6, 0, 'Pictures of Lindhaven Botanic Garden for newspapers, magazines and websites.'),
  (315, 6, 0, 'Bilder des Botanischen Gartens Lindhaven für Zeitungen, Zeitschriften und Websites.'),
  (317, 12, 0, 'Samen aus der Saatgutbank des Pflanzeninstituts Lindhaven, die abgegeben werden.'),
  (318, 12, 0, 'Tables and methods of the Lindhaven Plant Institute, free to use.'),
  (319, 12, 0, 'Tabellen und Methoden des Pflanzeninstituts Lindhaven zur freien Verwendung.');
