-- The bodies of Pflanzeninstitut Lindhaven.

-- ri.de  Institut
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(301, 1, 1, 0, 'Wir messen langsam'),
(301, 2, 1, 0, '<p>Manche unserer Messreihen laufen seit 1998, manche unserer Samen schlafen seit hundert Jahren. Das Pflanzeninstitut ist das Forschungshaus des <a href="page(101)">Botanischen Gartens</a>.</p>'),
(301, 3, 1, 0, '<section class="band">
  <div class="wrap">
    <h2>Woran wir arbeiten</h2>
    <ul class="cards">
      <li class="card">
        <img src="/images/ri/transect.svg" width="1200" height="720" alt="">
        <div>
          <h3><a href="page(303)">Pflanzen auf dem Weg nach oben</a></h3>
          <p>Sieben Flächen zwischen 1.180 und 2.390 Metern, seit 1998 jedes Jahr gezählt.</p>
        </div>
      </li>
      <li class="card">
        <img src="/images/ri/seeds.svg" width="1200" height="720" alt="">
        <div>
          <h3><a href="page(304)">Warum Samen warten</a></h3>
          <p>Was einen Samen weckt, und was ihn davor bewahrt, im falschen Jahr zu erwachen.</p>
        </div>
      </li>
      <li class="card">
        <img src="/images/ri/herbarium-sheet.svg" width="900" height="1000" alt="">
        <div>
          <h3><a href="page(306)">Herbarium</a></h3>
          <p>612.000 Bögen von 1764 bis letzte Woche, mehr als die Hälfte davon fotografiert.</p>
        </div>
      </li>
    </ul>
  </div>
</section>
<section class="band">
  <div class="wrap">
    <h2>Aus dem Institut</h2>
    <ul class="papers">
      <li><span class="when">März 2026</span> Die Aufnahme von 2025 ist geprüft und <a href="file(ri/transect-1998-2025.csv)" target="_self">frei verwendbar</a>. Bis auf die unterste liegen alle Flächen über den Zahlen von 2010.</li>
      <li><span class="when">Januar 2026</span> Bogen Nummer 350.000 ist fotografiert: ein Gänseblümchen aus dem Schlossgraben, 1871 von einem Kind gepresst.</li>
      <li><span class="when">Oktober 2025</span> Zwei Gerstenkörner aus der eingemauerten Probe von 1923 haben gekeimt. Die übrigen 198 nicht.</li>
    </ul>
  </div>
</section>'),
(301, 4, 1, 0, '<dl class="counts">
  <div><dt>Bögen im Herbarium</dt><dd>612.000</dd></div>
  <div><dt>Saatgutproben</dt><dd>9.480</dd></div>
  <div><dt>Jahre im Gelände</dt><dd>28</dd></div>
</dl>');

-- ri.de.01.01  Pflanzen auf dem Weg nach oben
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(303, 1, 1, 0, 'Pflanzen auf dem Weg nach oben'),
(303, 2, 1, 0, '<p>Auf ein wärmeres Klima antworten Bergpflanzen, indem sie höher steigen. Wir möchten wissen, wer steigt, wie schnell, und wer schon oben ist.</p>'),
(303, 3, 1, 0, '<h2>Was wir tun</h2>
<p>Jeden Juli knien zwei Menschen auf jeder der sieben Flächen zwei Tage lang und schreiben jede Pflanze auf. Das Verfahren ist seit 1998 dasselbe, das Gitter aus Schnur ebenso. Eine der beiden Personen war immer schon im Vorjahr dabei, damit sich auch die Augen vergleichen lassen.</p>
<h2>Was wir sehen</h2>
<div class="table" tabindex="0" role="region" aria-label="Arten von Gefäßpflanzen auf sieben Flächen von je 100 Quadratmetern">
<table class="bars">
  <caption>Arten von Gefäßpflanzen auf sieben Flächen von je 100 Quadratmetern</caption>
  <thead>
    <tr><th scope="col">Fläche</th><th scope="col" class="number">Höhe</th><th scope="col" class="number">1998</th><th scope="col" class="number">2010</th><th scope="col" class="number">2025</th><td class="bar"><span class="visually-hidden">2025 als Balken</span></td></tr>
  </thead>
  <tbody>
    <tr><th scope="row">P1</th><td class="number">1.180 m</td><td class="number">61</td><td class="number">58</td><td class="number">55</td><td class="bar"><svg viewBox="0 0 100 6" preserveAspectRatio="none" aria-hidden="true"><rect width="90" height="6"/></svg></td></tr>
    <tr><th scope="row">P2</th><td class="number">1.420 m</td><td class="number">57</td><td class="number">58</td><td class="number">60</td><td class="bar"><svg viewBox="0 0 100 6" preserveAspectRatio="none" aria-hidden="true"><rect width="98" height="6"/></svg></td></tr>
    <tr><th scope="row">P3</th><td class="number">1.660 m</td><td class="number">49</td><td class="number">52</td><td class="number">57</td><td class="bar"><svg viewBox="0 0 100 6" preserveAspectRatio="none" aria-hidden="true"><rect width="93" height="6"/></svg></td></tr>
    <tr><th scope="row">P4</th><td class="number">1.880 m</td><td class="number">41</td><td class="number">46</td><td class="number">53</td><td class="bar"><svg viewBox="0 0 100 6" preserveAspectRatio="none" aria-hidden="true"><rect width="87" height="6"/></svg></td></tr>
    <tr><th scope="row">P5</th><td class="number">2.090 m</td><td class="number">30</td><td class="number">36</td><td class="number">45</td><td class="bar"><svg viewBox="0 0 100 6" preserveAspectRatio="none" aria-hidden="true"><rect width="74" height="6"/></svg></td></tr>
    <tr><th scope="row">P6</th><td class="number">2.260 m</td><td class="number">19</td><td class="number">25</td><td class="number">33</td><td class="bar"><svg viewBox="0 0 100 6" preserveAspectRatio="none" aria-hidden="true"><rect width="54" height="6"/></svg></td></tr>
    <tr><th scope="row">P7</th><td class="number">2.390 m</td><td class="number">9</td><td class="number">14</td><td class="number">21</td><td class="bar"><svg viewBox="0 0 100 6" preserveAspectRatio="none" aria-hidden="true"><rect width="34" height="6"/></svg></td></tr>
  </tbody>
</table>
</div>
<p>Die vier höchsten Flächen gewinnen am meisten. Auf P7 hat sich die Zahl der Arten mehr als verdoppelt. Die Neuen sind nicht selten: Es sind Wiesenpflanzen, die früher dreihundert Meter tiefer haltmachten.</p>
<p>Auf P1 sinkt die Zahl. Dort sind die Bäume nachgerückt, und für das, was einmal dort wuchs, ist es zu dunkel geworden.</p>
<h2>Was wir nicht wissen</h2>
<p>Mehr Arten heißt nicht, dass es allen besser geht. Die alten Bewohner des Gipfels können nicht ausweichen, und ein fünfzigjähriges Polster stirbt langsam. Wir werden es noch jahrelang mitzählen, obwohl seine Sache entschieden ist.</p>
<p>Alle Zahlen: <a href="file(ri/transect-1998-2025.csv)" target="_self">Tabelle der Flächen, 1998 bis 2025 (CSV)</a>.</p>'),
(303, 4, 1, 0, '<dl>
  <dt>Leitung</dt><dd>Prof. Jorun Vestergaard</dd>
  <dt>Seit</dt><dd>1998</dd>
  <dt>Flächen</dt><dd>7 zu 10 × 10 Metern</dd>
  <dt>Höhenlage</dt><dd>1.180 bis 2.390 Meter</dd>
  <dt>Daten</dt><dd>CC BY 4.0</dd>
</dl>'),
(303, 5, 1, 0, '<img src="/images/ri/transect.svg" width="1200" height="720" alt="Höhenlinien eines Berges mit einer gepunkteten Linie durch sieben Flächen vom Tal zum Gipfel">
<figcaption>Die Linie der Flächen an der Hohen Kanzel.</figcaption>');

-- ri.de.01.02  Warum Samen warten
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(304, 1, 1, 0, 'Warum Samen warten'),
(304, 2, 1, 0, '<p>Ein Samen, der in einer warmen Januarwoche erwacht, ist verloren. Deshalb trauen die meisten Samen einer warmen Woche nicht.</p>'),
(304, 3, 1, 0, '<h2>Drei Schlösser</h2>
<p>Ein Samen kann durch eine Schale verschlossen sein, die kein Wasser durchlässt, durch einen Keimling, der noch nicht fertig ist, oder durch einen Stoff, der erst ausgewaschen werden muss. Viele haben zwei dieser Schlösser, manche alle drei. Im Kühlraum öffnen wir eines nach dem anderen und notieren, welcher Schlüssel passt: Frost, Rauch, Licht, ein nasser Monat, der Magen einer Drossel.</p>
<h2>Die Probe von 1923</h2>
<p>Beim Umbau des Samenraums mauerte 1923 jemand eine Kiste mit zwanzig Flaschen ein und legte einen Zettel dazu: alle fünf Jahre eine öffnen. Der Zettel geriet in Vergessenheit, die Kiste fand sich 1998. Seither halten wir uns an den Plan, im Takt des Zettels.</p>
<div class="table" tabindex="0" role="region" aria-label="Keimung aus den bisher geöffneten Flaschen">
<table>
  <caption>Keimung aus den bisher geöffneten Flaschen</caption>
  <thead><tr><th scope="col">Flasche</th><th scope="col">Geöffnet</th><th scope="col">Art</th><th scope="col" class="number">Gekeimt von 200</th></tr></thead>
  <tbody>
    <tr><td>1</td><td>2000</td><td class="name">Verbascum thapsus</td><td class="number">94</td></tr>
    <tr><td>2</td><td>2005</td><td class="name">Malva neglecta</td><td class="number">41</td></tr>
    <tr><td>3</td><td>2010</td><td class="name">Agrostemma githago</td><td class="number">0</td></tr>
    <tr><td>4</td><td>2015</td><td class="name">Trifolium pratense</td><td class="number">12</td></tr>
    <tr><td>5</td><td>2020</td><td class="name">Plantago major</td><td class="number">7</td></tr>
    <tr><td>6</td><td>2025</td><td class="name">Hordeum vulgare</td><td class="number">2</td></tr>
  </tbody>
</table>
</div>
<p>Die letzte Flasche ist 2095 fällig. Bis dahin müssen wir jemanden finden.</p>
<p>Was wir an jüngeren Samen abgeben können, steht in der Liste zum <a href="page(317)">Samentausch</a>.</p>'),
(304, 4, 1, 0, '<dl>
  <dt>Leitung</dt><dd>Dr. Amadou Keita</dd>
  <dt>Saatgutproben</dt><dd>9.480 von 4.100 Arten</dd>
  <dt>Lagerung</dt><dd>−18 °C, 15 % Feuchte</dd>
  <dt>Nächste Flasche</dt><dd>2030</dd>
</dl>'),
(304, 5, 1, 0, '<img src="/images/ri/seeds.svg" width="1200" height="720" alt="Die Spirale eines Samenstands und drei Samen in Kreisen, wie unter der Lupe">
<figcaption>Sonnenblume, Ahorn, Löwenzahn, Rizinus.</figcaption>');

-- ri.de.02  Herbarium
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(306, 1, 1, 0, 'Herbarium'),
(306, 2, 1, 0, '<p>Eine gepresste Pflanze, ein Etikett, ein Datum. Mehr ist es nicht, und doch ist es der einzige Beweis, dass eine Pflanze einmal an einem Ort wuchs.</p>'),
(306, 3, 1, 0, '<h2>Was in den Schränken liegt</h2>
<p>Der älteste Bogen ist ein Gagelstrauch von 1764, gesammelt dort, wo heute der Bahnhof steht. Die Sammlung deckt Nordwestdeutschland seit 1820 lückenlos ab, die Gebirge von den Pyrenäen bis zum Kaukasus seit 1905. Etwa 1.900 Bögen sind Typen: die Belege, nach denen eine Art benannt wurde.</p>
<h2>Fotografiert und vermessen</h2>
<p>Seit 2014 fotografieren drei Menschen Bogen für Bogen, mit Maßstab und Farbstreifen. Bisher sind 350.000 geschafft. Aus den Bildern messen wir Blattflächen, Blühzustand und Fraßspuren; daran dachte niemand, als die Pflanzen gepresst wurden.</p>
<h2>Die Sammlung nutzen</h2>
<p>Der Leseraum steht allen offen, die eine Frage haben, dienstags bis donnerstags von 9 bis 16 Uhr. Bitte schreiben Sie zwei Wochen vorher, was Sie sehen möchten. Einrichtungen leihen wir bis zu sechzig Bögen für sechs Monate; die Bedingungen passen auf eine Seite: <a href="file(ri/leihbedingungen.txt)" target="_self">Leihbedingungen (Text)</a>.</p>'),
(306, 4, 1, 0, '<dl>
  <dt>Gegründet</dt><dd>1887, mit älteren Teilen</dd>
  <dt>Bögen</dt><dd>612.000</dd>
  <dt>Typen</dt><dd>etwa 1.900</dd>
  <dt>Kustodin</dt><dd>Dr. Ilse Tammena</dd>
  <dt>Post</dt><dd><a href="mailto:herbarium@lindhaven.example">herbarium@<wbr>lindhaven.example</a></dd>
</dl>'),
(306, 5, 1, 0, '<img src="/images/ri/herbarium-sheet.svg" width="900" height="1000" alt="Ein gepresster Farn auf einem Herbarbogen mit Etikett, Farbskala und Strichcode">
<figcaption>Wurmfarn, 1907 im Wald des Gartens gesammelt.</figcaption>');

-- ri.de.03  Veröffentlichungen
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(308, 1, 1, 0, 'Veröffentlichungen'),
(308, 2, 1, 0, '<p>Aufsätze, Datensätze und der Jahresbericht. Was wir veröffentlichen, ist frei zu lesen.</p>'),
(308, 3, 1, 0, '<h2>Aufsätze</h2>
<ul class="papers">
  <li><span class="when">2026</span> J. Vestergaard, A. Keita, L. Brandt: Twenty-eight summers on the Hohe Kanzel. Species gain and delayed loss along an altitude gradient. Lindhaven Contributions 61, S. 3–44. Auf Englisch.</li>
  <li><span class="when">2025</span> A. Keita: Schlaf in Stufen. Zweifache Keimruhe bei Gebirgsseggen. Lindhaven Contributions 60, S. 12–29.</li>
  <li><span class="when">2024</span> I. Tammena, R. Oyelaran: What pressed leaves remember. Grazing marks in 40,000 herbarium sheets. Lindhaven Contributions 59, S. 55–81. Auf Englisch.</li>
  <li><span class="when">2022</span> H. Lüders, J. Vestergaard: Vierzig Winter zwischen zwei Bänken. Blühbeginn des Schneeglöckchens, 1981 bis 2021. Lindhaven Contributions 57, S. 1–9.</li>
</ul>
<h2>Daten</h2>
<ul>
  <li><a href="file(ri/transect-1998-2025.csv)" target="_self">Dauerflächen 1998 bis 2025 (CSV)</a>, zum Projekt <a href="page(303)">Pflanzen auf dem Weg nach oben</a></li>
  <li><a href="page(319)">Alle Tabellen mit ihren Methoden</a></li>
</ul>');

-- ri.de.99.01  Impressum und Barrierefreiheit
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(311, 1, 1, 0, 'Impressum und Barrierefreiheit'),
(311, 2, 1, 0, '<h2>Herausgeberin</h2>
<p>Stiftung Lindhaven, Orangeriegasse 12, 26871 Lindhaven. Direktorin des Instituts: Prof. Jorun Vestergaard. Telefon 04961 555 0180, <a href="mailto:institut@lindhaven.example">institut@lindhaven.example</a>.</p>
<h2>Datenschutz</h2>
<p>Diese Website lädt nichts von anderen Servern und speichert keine Adressen. Sie zählt, wie oft eine Seite am Tag gelesen wird.</p>
<h2>Barrierefreiheit</h2>
<p>Die Seiten folgen den Richtlinien WCAG 2.2 auf der Stufe AA. Jedes Diagramm steht neben der Tabelle, aus der es gezeichnet wurde. Wenn Sie etwas an der Nutzung dieser Seiten hindert, schreiben Sie uns bitte: <a href="mailto:institut@lindhaven.example">institut@lindhaven.example</a>.</p>
<h2>Zitieren</h2>
<p>Abbildungen und Daten dürfen unter CC BY 4.0 verwendet werden, mit dem Namen des Instituts und der Jahreszahl.</p>');
