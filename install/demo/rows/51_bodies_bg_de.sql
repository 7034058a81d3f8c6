-- The bodies of Botanischer Garten Lindhaven.

-- bg.de  Start
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(101, 1, 1, 0, 'Fünf Hektar, achttausend Pflanzen, eine sehr alte Palme'),
(101, 2, 1, 0, '<p>Vom Regenwald bis zur Baumgrenze noch vor dem Mittagessen: Der Garten am Fluss steht seit 1887 allen offen.</p>'),
(101, 3, 1, 0, '<section class="band">
  <div class="wrap">
    <h2>Drei Orte für den Anfang</h2>
    <ul class="cards">
      <li class="card">
        <img src="/images/bg/palm-house.svg" width="1200" height="720" alt="" loading="lazy">
        <div>
          <h3><a href="page(108)">Palmenhaus</a></h3>
          <p>Das ganze Jahr warm, feucht und grün. Die Dattelpalme in der Mitte wurde gepflanzt, bevor das Dach fertig war.</p>
        </div>
      </li>
      <li class="card">
        <img src="/images/bg/alpine-garden.svg" width="1200" height="720" alt="" loading="lazy">
        <div>
          <h3><a href="page(109)">Alpinum</a></h3>
          <p>Vier Gebirge aus Kalk und Granit, am schönsten von April bis Juni.</p>
        </div>
      </li>
      <li class="card">
        <img src="/images/bg/night-garden.svg" width="1200" height="720" alt="" loading="lazy">
        <div>
          <h3><a href="page(110)">Nachtgarten</a></h3>
          <p>Blüten, die sich in der Dämmerung öffnen, und die Falter, die zu ihnen kommen. Im Sommer lange geöffnet.</p>
        </div>
      </li>
    </ul>
  </div>
</section>
<section class="band">
  <div class="wrap">
    <h2>Das Blütenjahr</h2>
    <div class="table" tabindex="0" role="region" aria-label="Das Blütenjahr, Monat für Monat">
      <table class="year">
        <colgroup><col class="plant"><col span="12"></colgroup>
        <thead>
          <tr><td></td><th scope="col">Jan</th><th scope="col">Feb</th><th scope="col">Mär</th><th scope="col">Apr</th><th scope="col">Mai</th><th scope="col">Jun</th><th scope="col">Jul</th><th scope="col">Aug</th><th scope="col">Sep</th><th scope="col">Okt</th><th scope="col">Nov</th><th scope="col">Dez</th></tr>
        </thead>
        <tbody>
          <tr><th scope="row">Schneeglöckchen <span>Wald</span></th><td class="in first"><span class="visually-hidden">blüht</span></td><td class="in"><span class="visually-hidden">blüht</span></td><td class="in last"><span class="visually-hidden">blüht</span></td><td></td><td></td><td></td><td></td><td></td><td></td><td></td><td></td><td class="bud first last"><span class="visually-hidden">Knospen</span></td></tr>
          <tr><th scope="row">Magnolie <span>Flusstor</span></th><td></td><td class="bud first"><span class="visually-hidden">Knospen</span></td><td class="in"><span class="visually-hidden">blüht</span></td><td class="in last"><span class="visually-hidden">blüht</span></td><td></td><td></td><td></td><td></td><td></td><td></td><td></td><td></td></tr>
          <tr><th scope="row">Enzian <span>Alpinum</span></th><td></td><td></td><td class="bud first"><span class="visually-hidden">Knospen</span></td><td class="in"><span class="visually-hidden">blüht</span></td><td class="in"><span class="visually-hidden">blüht</span></td><td class="in last"><span class="visually-hidden">blüht</span></td><td></td><td></td><td></td><td></td><td></td><td></td></tr>
          <tr><th scope="row">Schwertlilie <span>Familienbeete</span></th><td></td><td></td><td></td><td class="bud first"><span class="visually-hidden">Knospen</span></td><td class="in"><span class="visually-hidden">blüht</span></td><td class="in last"><span class="visually-hidden">blüht</span></td><td></td><td></td><td></td><td></td><td></td><td></td></tr>
          <tr><th scope="row">Alte Rosen <span>Mauergarten</span></th><td></td><td></td><td></td><td></td><td class="bud first"><span class="visually-hidden">Knospen</span></td><td class="in"><span class="visually-hidden">blüht</span></td><td class="in last"><span class="visually-hidden">blüht</span></td><td></td><td></td><td></td><td></td><td></td></tr>
          <tr><th scope="row">Riesenseerose <span>Palmenhaus</span></th><td></td><td></td><td></td><td></td><td class="bud first"><span class="visually-hidden">Knospen</span></td><td class="in"><span class="visually-hidden">blüht</span></td><td class="in"><span class="visually-hidden">blüht</span></td><td class="in"><span class="visually-hidden">blüht</span></td><td class="in last"><span class="visually-hidden">blüht</span></td><td></td><td></td><td></td></tr>
          <tr><th scope="row">Mondwinde <span>Nachtgarten</span></th><td></td><td></td><td></td><td></td><td></td><td class="bud first"><span class="visually-hidden">Knospen</span></td><td class="in"><span class="visually-hidden">blüht</span></td><td class="in"><span class="visually-hidden">blüht</span></td><td class="in last"><span class="visually-hidden">blüht</span></td><td></td><td></td><td></td></tr>
          <tr><th scope="row">Herbstzeitlose <span>Wiese</span></th><td></td><td></td><td></td><td></td><td></td><td></td><td></td><td></td><td class="in first"><span class="visually-hidden">blüht</span></td><td class="in last"><span class="visually-hidden">blüht</span></td><td></td><td></td></tr>
          <tr><th scope="row">Zaubernuss <span>Uferweg</span></th><td class="in first"><span class="visually-hidden">blüht</span></td><td class="in last"><span class="visually-hidden">blüht</span></td><td></td><td></td><td></td><td></td><td></td><td></td><td></td><td></td><td class="bud first"><span class="visually-hidden">Knospen</span></td><td class="in last"><span class="visually-hidden">blüht</span></td></tr>
        </tbody>
      </table>
    </div>
    <ul class="key"><li>Knospen</li><li class="in">Blüte</li></ul>
  </div>
</section>
<section class="band">
  <div class="wrap split">
    <img src="/images/bg/paper-gardens.svg" width="1200" height="720" alt="Pflanzenzeichnungen, ein Stift und Aquarellnäpfe auf einem Holztisch" loading="lazy">
    <div>
      <h2>Gärten auf Papier</h2>
      <p>Bevor es Fotografien gab, brauchte die Botanik Menschen, die zeichnen konnten. Die Orangerie zeigt neunzig Blätter aus unserer Sammlung, darunter vierzig, die ihre Mappen noch nie verlassen haben.</p>
      <p><a href="page(112)">Zur Ausstellung</a></p>
    </div>
  </div>
</section>
<section class="band">
  <div class="wrap">
    <h2>Kommen Sie mit</h2>
    <ul class="agenda">
      <li><span class="when">Samstags um 11 Uhr</span> <span>Der Garten in einer Stunde, mit jemandem aus dem Gärtnerteam</span> <span class="where">Haupttor</span></li>
      <li><span class="when">Am ersten Sonntag um 14 Uhr</span> <span>Unter Glas: die drei Häuser vom Keller bis zur Kuppel</span> <span class="where">Palmenhaus, Westtür</span></li>
      <li><span class="when">Sonntags um 15 Uhr</span> <span>Mitzeichnen: Papier, Stifte und eine Pflanze</span> <span class="where">Orangerie, Obergeschoss</span></li>
      <li><span class="when">Freitags um 21.30 Uhr im Juli und August</span> <span>Falter und Mondwinden im Dunkeln</span> <span class="where">Flusstor</span></li>
    </ul>
    <p>Die Führungen sind im Eintritt enthalten. <a href="page(111)">Das ganze Programm</a></p>
  </div>
</section>
<section class="band">
  <div class="wrap">
    <h2>Notizen aus den Beeten</h2>
    <div class="notes">
      <article>
        <h3>Montags wird nicht gemäht</h3>
        <p>Seit dem Frühjahr mähen wir die Wiese am Fluss in Streifen, jede Woche einen, mit der Sense. Was fliegt, kann in den nächsten Streifen umziehen. Es dauert fünfmal so lange, und inzwischen gibt es eine Warteliste von Leuten, die es lernen möchten.</p>
        <p class="who">Enno Janssen, Wiesen und Uferweg</p>
      </article>
      <article>
        <h3>Ameisen im Dienst</h3>
        <p>Die Veilchen im Wald säen sich mit Hilfe von Ameisen aus, die die Samen wegen eines kleinen fetten Anhängsels forttragen. Seither wird dort nicht mehr geharkt. Wer im Juni einer Ameise folgt, sieht, wo im nächsten Jahr die Veilchen stehen.</p>
        <p class="who">Thea Wilken, Wald</p>
      </article>
      <article>
        <h3>Pünktlich wie die Seerose</h3>
        <p>Die erste Riesenseerose des Jahres öffnete sich um zehn vor sieben am Abend, genau wie im Vorjahr. Am dritten Abend hatte sie sich geschlossen und war untergetaucht. Zweihundert Menschen waren gekommen, und alle flüsterten.</p>
        <p class="who">Jale Demir, Gewächshäuser</p>
      </article>
    </div>
  </div>
</section>
<section class="band">
  <div class="wrap">
    <h2>Gut zu wissen</h2>
    <details>
      <summary>Darf mein Hund mitkommen?</summary>
      <p>Ja, an der kurzen Leine, nur nicht in die Gewächshäuser und ins Alpinum. Assistenzhunde dürfen überallhin.</p>
    </details>
    <details>
      <summary>Gibt es etwas für Kinder?</summary>
      <p>Fragen Sie am Tor nach dem Ranzen mit Lupe, Karte und zwölf Rätseln. Er kostet nichts; als Pfand bleibt ein Schuh da oder sonst etwas, das Sie vermissen würden. Der Wasserspielplatz am Wehr ist von Mai bis September geöffnet.</p>
    </details>
    <details>
      <summary>Komme ich mit Rollstuhl oder Kinderwagen durch den Garten?</summary>
      <p>Zwei Drittel der Wege sind stufenlos. Im Faltblatt am Tor sind sie grün eingezeichnet. Mehr unter <a href="page(122)">Barrierefreiheit</a>.</p>
    </details>
    <details>
      <summary>Darf ich fotografieren?</summary>
      <p>So viel Sie möchten, für sich selbst. Stative bleiben auf den Wegen. Hochzeitspaare und Filmteams rufen uns bitte zwei Wochen vorher an.</p>
    </details>
    <details>
      <summary>Meine Zimmerpflanze ist krank. Können Sie helfen?</summary>
      <p>Mittwochs von 14 bis 16 Uhr sitzt am grünen Tisch in der Orangerie jemand, der das meiste schon gesehen hat. Bringen Sie die Pflanze in einem geschlossenen Beutel mit, damit ihre Gäste bei ihr bleiben.</p>
    </details>
  </div>
</section>
<section class="band">
  <div class="wrap split">
    <div>
      <h2>Das Forschungshaus nebenan</h2>
      <p>Hinter der Blutbuche steht das Pflanzeninstitut. Dort werden Bergblumen gezählt, Samen nach hundert Jahren Schlaf geweckt und 612.000 gepresste Pflanzen aufbewahrt. Vieles von dem, was auf unseren Schildern steht, wurde dort herausgefunden.</p>
      <p><a href="page(301)">Zum Pflanzeninstitut</a></p>
    </div>
    <img src="/images/ri/seeds.svg" width="1200" height="720" alt="Die Spirale eines Samenstands und drei Samen in Kreisen, wie unter der Lupe" loading="lazy">
  </div>
</section>'),
(101, 4, 1, 0, '<section>
  <h2>Täglich geöffnet</h2>
  <p>April bis September 9 bis 20 Uhr<br>Oktober bis März 9 bis 17 Uhr</p>
</section>
<section>
  <h2>Eintritt</h2>
  <p>8 Euro, ermäßigt 5 Euro<br>Bis 16 Jahre frei</p>
</section>
<section>
  <h2>Anfahrt</h2>
  <p>Mit der Linie 3 bis Orangeriegasse, dann zwei Minuten zu Fuß<br><a href="page(105)">Alle Wege zum Garten</a></p>
</section>');

-- bg.de.01.01.01  Öffnungszeiten und Preise
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(104, 1, 1, 0, 'Öffnungszeiten und Preise'),
(104, 2, 1, 0, '<p>Der Garten ist an allen Tagen des Jahres geöffnet bis auf einen: Am 24. Dezember gehört er denen, die ihn pflegen.</p>'),
(104, 3, 1, 0, '<h2>Öffnungszeiten</h2>
<div class="table" tabindex="0" role="region" aria-label="Öffnungszeiten">
<table>
  <caption>Alle Angaben in Uhr</caption>
  <thead>
    <tr><th scope="col">Bereich</th><th scope="col">April bis September</th><th scope="col">Oktober bis März</th></tr>
  </thead>
  <tbody>
    <tr><th scope="row">Freigelände</th><td>9 bis 20</td><td>9 bis 17</td></tr>
    <tr><th scope="row">Gewächshäuser</th><td>10 bis 18</td><td>10 bis 16.30</td></tr>
    <tr><th scope="row">Nachtgarten</th><td>Do bis Sa bis 23, im Juli und August</td><td>geschlossen</td></tr>
    <tr><th scope="row">Café in der Orangerie</th><td>9.30 bis 18.30</td><td>9.30 bis 16.30</td></tr>
  </tbody>
</table>
</div>
<p>Letzter Einlass ist eine Stunde vor Schließung des Geländes. Ab Windstärke 8 sperren wir den Wald.</p>
<h2>Eintritt</h2>
<div class="table" tabindex="0" role="region" aria-label="Eintritt">
<table>
  <thead>
    <tr><th scope="col">Karte</th><th scope="col" class="number">Preis</th></tr>
  </thead>
  <tbody>
    <tr><td>Tageskarte</td><td class="number">8,00 €</td></tr>
    <tr><td>Ermäßigt: Studierende, Auszubildende, Menschen mit Schwerbehindertenausweis</td><td class="number">5,00 €</td></tr>
    <tr><td>Bis 16 Jahre sowie Begleitpersonen von Menschen mit Behinderung</td><td class="number">frei</td></tr>
    <tr><td>Jahreskarte, zwölf Monate gültig</td><td class="number">32,00 €</td></tr>
  </tbody>
</table>
</div>
<p>Karten gibt es an beiden Toren, bar oder bargeldlos. Eine Anmeldung ist nur für Gruppen ab sechzehn Personen nötig. An jedem ersten Montag im Monat zahlen alle, was sie möchten.</p>');

-- bg.de.01.01.02  Anfahrt
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(105, 1, 1, 0, 'Anfahrt'),
(105, 2, 1, 0, '<p>Das Haupttor liegt in der Orangeriegasse, zehn Minuten vom Bahnhof entfernt. Das Flusstor am Treidelpfad öffnet um 10 Uhr.</p>'),
(105, 3, 1, 0, '<h2>Mit der Straßenbahn</h2>
<p>Die Linie 3 fährt alle acht Minuten vom Bahnhof. Steigen Sie an der Orangeriegasse aus; das Tor liegt hinter den Kastanien. Bahnen und Haltestelle sind stufenlos.</p>
<h2>Mit dem Fahrrad</h2>
<p>Der Flussradweg führt am Garten vorbei. An jedem Tor stehen sechzig Bügel, am Haupttor auch eine Luftpumpe und Werkzeug. Fahrräder bleiben draußen.</p>
<h2>Mit dem Auto</h2>
<p>Einen eigenen Parkplatz haben wir nicht. Nutzen Sie bitte den an der Wehrbrücke, 400 Meter entfernt. Vier Plätze für Menschen mit blauem Parkausweis liegen direkt neben dem Haupttor.</p>
<h2>Zu Fuß</h2>
<p>Folgen Sie vom Marktplatz dem Mühlbach. Der Weg dauert eine Viertelstunde, zuletzt unter Linden, die 1904 gepflanzt wurden.</p>
<p>Einen Plan zum Mitnehmen finden Sie unter <a href="page(313)">Pläne und Faltblätter</a>.</p>');

-- bg.de.02  Der Garten
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(107, 1, 1, 0, 'Der Garten'),
(107, 2, 1, 0, '<p>Was als Arzneigarten hinter dem Spital begann, ist heute eine Sammlung von 8.400 Pflanzenarten. Das meiste lässt sich an einem Nachmittag sehen, und jedes Mal übersieht man etwas.</p>'),
(107, 3, 1, 0, '<ul class="cards">
  <li class="card">
    <img src="/images/bg/palm-house.svg" width="1200" height="720" alt="">
    <div>
      <h2><a href="page(108)">Palmenhaus</a></h2>
      <p>Vierundzwanzig Grad, Regen um zehn und um vier.</p>
    </div>
  </li>
  <li class="card">
    <img src="/images/bg/alpine-garden.svg" width="1200" height="720" alt="">
    <div>
      <h2><a href="page(109)">Alpinum</a></h2>
      <p>Polster, Geröll und ein Bach aus der Wasserleitung.</p>
    </div>
  </li>
  <li class="card">
    <img src="/images/bg/night-garden.svg" width="1200" height="720" alt="">
    <div>
      <h2><a href="page(110)">Nachtgarten</a></h2>
      <p>Weiße Blüten, starke Düfte, späte Stunden.</p>
    </div>
  </li>
</ul>
<h2>Wie die Beete geordnet sind</h2>
<p>Der älteste Teil folgt den Familien: Alle Korbblütler stehen beisammen, daneben alle Schmetterlingsblütler. Seit den Zwanzigerjahren wurde nach Herkunft gepflanzt, seit 1990 nach Lebensweise. Der Rasenweg vom Tor zum Fluss führt also durch drei Arten, über Pflanzen nachzudenken.</p>
<p>Jedes Schild nennt den wissenschaftlichen Namen, die Familie, den Fundort und eine Nummer. Mit dieser Nummer findet das <a href="page(306)">Herbarium des Pflanzeninstituts</a> den Bogen, der dazugehört.</p>
<p>Unsere <a href="file(bg/old-trees.csv)" target="_self">Liste der alten Bäume</a> ist eine Tabelle zur freien Verwendung, mit Art, Stammumfang und Pflanzjahr. Für Berichte über den Garten gibt es <a href="page(315)">Pressebilder</a>.</p>');

-- bg.de.02.01  Palmenhaus
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(108, 1, 1, 0, 'Palmenhaus'),
(108, 2, 1, 0, '<p>Eiserne Rippen, 3.100 Scheiben und eine Dattelpalme, die 2009 die Kuppel erreichte. Seither beugt sie sich höflich.</p>'),
(108, 3, 1, 0, '<h2>Was hier wächst</h2>
<p>Die Mitte gehört den Palmen. Um sie herum stehen Palmfarne, die wie Palmen aussehen und doch näher mit den Kiefern verwandt sind, im Nordflügel Baumfarne aus den Bergen Javas. Im Südflügel liegt das Becken. Von Juni bis September öffnet sich dort die Riesenseerose: weiß am ersten Abend, rosa am zweiten, am dritten ist sie fort.</p>
<h2>Ein Haus, das atmet</h2>
<p>Glas und Eisen bewegen sich, sobald die Sonne herauskommt. Die Baumeister von 1891 setzten jede Rippe auf eine Platte aus Blei, damit sich die Kuppel um zwei Zentimeter dehnen kann. Wer im Juni mittags an der Westtür steht, kann es hören.</p>
<h2>Bitte beachten</h2>
<p>An kalten Tagen beschlagen Brillen; im Windfang stehen Bänke, auf denen man warten kann, bis die Sicht wieder klar ist. Nach dem Regen um zehn und um sechzehn Uhr ist der Boden nass.</p>
<p>Wie die Palme zu uns kam, erzählt <a href="page(116)">Die Palme, der ihr Haus zu klein wurde</a>.</p>'),
(108, 4, 1, 0, '<dl>
  <dt>Erbaut</dt><dd>1889 bis 1891</dd>
  <dt>Höhe der Kuppel</dt><dd>21 Meter</dd>
  <dt>Temperatur</dt><dd>am Tag 24 °C, nachts 18 °C</dd>
  <dt>Pflanzenarten</dt><dd>1.150</dd>
  <dt>Geöffnet</dt><dd>10 bis 18 Uhr, im Winter 10 bis 16.30 Uhr</dd>
  <dt>Zugang</dt><dd>stufenlos durch die Westtür</dd>
</dl>'),
(108, 5, 1, 0, '<img src="/images/bg/palm-house.svg" width="1200" height="720" alt="Die Krone einer Dattelpalme mit reifenden Früchten unter einer Glaskuppel">
<figcaption>In warmen Jahren trägt die Palme. Die Datteln schmecken nach fast nichts.</figcaption>');

-- bg.de.02.02  Alpinum
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(109, 1, 1, 0, 'Alpinum'),
(109, 2, 1, 0, '<p>Sechshundert Tonnen Fels, 1912 mit der Bahn gebracht, und sieben Menschen, die jede Ritze darin kennen.</p>'),
(109, 3, 1, 0, '<h2>Vier Gebirge</h2>
<p>Der Weg steigt von den Pyrenäen in die Alpen, überquert auf einer einzigen Steinplatte den Balkan und endet im Kaukasus. Links liegt Kalk, rechts Granit. Viele Gattungen wachsen auf beiden Seiten mit verschiedenen Arten; ein Blick hinüber lohnt sich.</p>
<h2>Warum Polster?</h2>
<p>Ein Polster ist eine gute Antwort auf Wind. In seinem Inneren steht die Luft still, und an einem sonnigen Märztag kann es dort fünfzehn Grad wärmer sein als ringsum. Aus alten Blättern macht sich die Pflanze ihren Boden selbst, und andere keimen darin. Manche unserer Polster sind sechzig Jahre alt und nicht größer als ein Teller.</p>
<h2>Samen für andere Gärten</h2>
<p>Jeden Herbst sammeln wir Samen und tauschen sie mit 340 Gärten in aller Welt. An Wildstandorten sammeln wir nur gemeinsam mit den <a href="page(303)">Dauerflächen des Instituts</a>, und nie mehr als einen Fruchtstand von zwanzig.</p>'),
(109, 4, 1, 0, '<dl>
  <dt>Angelegt</dt><dd>1912</dd>
  <dt>Höchster Punkt</dt><dd>7 Meter über der Wiese</dd>
  <dt>Pflanzenarten</dt><dd>2.200</dd>
  <dt>Am schönsten</dt><dd>April bis Juni</dd>
  <dt>Zugang</dt><dd>unterer Weg stufenlos, oberer Weg mit 64 Stufen</dd>
</dl>'),
(109, 5, 1, 0, '<img src="/images/bg/alpine-garden.svg" width="1200" height="720" alt="Polster mit blauen, rosa und gelben Blüten zwischen grauen Felsen, dahinter Schneegipfel">
<figcaption>Mai auf der Kalkseite.</figcaption>');

-- bg.de.02.03  Nachtgarten
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(110, 1, 1, 0, 'Nachtgarten'),
(110, 2, 1, 0, '<p>Am Mittag sieht er nach wenig aus. Kommen Sie wieder, wenn die Amseln still werden.</p>'),
(110, 3, 1, 0, '<h2>Eine Stunde nach Sonnenuntergang</h2>
<p>Den Anfang macht die Nachtkerze: Ihre Blätter entrollen sich binnen einer Minute, und man kann dabei zusehen. Ziertabak und Mondwinde folgen. Sie sind weiß, weil Weiß das ist, was im letzten Licht noch zu sehen ist, und sie duften, weil ein Nachtfalter seiner Nase über weite Strecken folgt.</p>
<h2>Wer kommt</h2>
<p>Bisher haben wir 212 Arten von Nachtfaltern gezählt. Der Windenschwärmer überquert für diesen Besuch die Alpen; sein Rüssel ist so lang wie ein Finger. Über dem Becken jagen Fledermäuse. Sie interessieren sich für die Falter und nicht für Sie.</p>
<h2>Mit Absicht dunkel</h2>
<p>In diesem Teil des Gartens gibt es keine Lampen. Der Weg ist aus hellem Kies, und nach zehn Minuten finden ihn die Augen von selbst. Bitte lassen Sie Taschenlampen und Telefone in der Tasche.</p>'),
(110, 4, 1, 0, '<dl>
  <dt>Angelegt</dt><dd>1998</dd>
  <dt>Lange geöffnet</dt><dd>Juli und August, donnerstags bis samstags bis 23 Uhr</dd>
  <dt>Nachtfalter</dt><dd>212 Arten bei der letzten Zählung</dd>
  <dt>Zugang</dt><dd>stufenlos, fester Kies</dd>
</dl>'),
(110, 5, 1, 0, '<img src="/images/bg/night-garden.svg" width="1200" height="720" alt="Weiße Trompetenblüten unter dem Vollmond, darüber ein Schwärmer">
<figcaption>Ziertabak und Schwärmer, gegen halb elf.</figcaption>');

-- bg.de.03  Programm
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(111, 1, 1, 0, 'Programm'),
(111, 2, 1, 0, '<p>Ausstellungen in der Orangerie, Führungen mit denen, die die Pflanzen pflegen, und ein paar Abende, für die man eine Jacke braucht.</p>'),
(111, 3, 1, 0, '<ul class="cards">
  <li class="card">
    <img src="/images/bg/paper-gardens.svg" width="1200" height="720" alt="">
    <div>
      <p class="when">Bis Ende 2029</p>
      <h2><a href="page(112)">Gärten auf Papier</a></h2>
      <p>Neunzig Pflanzenzeichnungen aus drei Jahrhunderten.</p>
    </div>
  </li>
</ul>
<h2>Regelmäßige Führungen</h2>
<div class="table" tabindex="0" role="region" aria-label="Regelmäßige Führungen">
<table>
  <thead><tr><th scope="col">Wann</th><th scope="col">Was</th><th scope="col">Treffpunkt</th></tr></thead>
  <tbody>
    <tr><td>Samstags um 11 Uhr</td><td>Der Garten in einer Stunde</td><td>Haupttor</td></tr>
    <tr><td>Am ersten Sonntag um 14 Uhr</td><td>Unter Glas: die drei Häuser</td><td>Palmenhaus, Westtür</td></tr>
    <tr><td>Freitags um 21.30 Uhr im Juli und August</td><td>Falter und Mondwinden</td><td>Flusstor</td></tr>
    <tr><td>Am zweiten Mittwoch um 15 Uhr</td><td>Rundgang für blinde und sehbehinderte Gäste, mit Pflanzen zum Tasten und Riechen</td><td>Haupttor</td></tr>
  </tbody>
</table>
</div>
<p>Die Führungen sind im Eintritt enthalten. Gruppen schreiben an <a href="mailto:walks@lindhaven.example">walks@lindhaven.example</a>.</p>
<p>Was nicht auf ein Programm warten kann, hängt am Tor: der <a href="page(316)">Aushang</a>.</p>');

-- bg.de.03.01  Gärten auf Papier
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(112, 1, 1, 0, 'Gärten auf Papier'),
(112, 2, 1, 0, '<p>Neunzig Zeichnungen, drei Jahrhunderte und eine Frage: Was sieht ein Auge, das keine Kamera sieht?</p>'),
(112, 3, 1, 0, '<p>Eine Fotografie zeigt eine Pflanze an einem Tag. Eine Zeichnung zeigt, was alle Pflanzen einer Art gemeinsam haben: aufgeschnitten, gedreht, mit Knospe und Frucht am selben Stängel. Deshalb werden bis heute Zeichnungen in Auftrag gegeben.</p>
<h2>Die Schwestern Ahrens</h2>
<p>Im Mittelpunkt stehen vierzig Blätter von Wilhelmine und Dorothea Ahrens, die von 1893 bis 1931 für den Garten zeichneten. Die eine zeichnete die Pflanze, die andere den Schnitt unter der Lupe; an den Signaturen lässt es sich ablesen. Die meisten Blätter sind zum ersten Mal zu sehen. Um die Farben zu schonen, wechseln wir sie alle vier Monate.</p>
<h2>Mitzeichnen</h2>
<p>Sonntags um 15 Uhr liegen im letzten Raum Papier, Stifte und eine Pflanze bereit. Kinder sind ebenso willkommen wie Menschen, die behaupten, sie könnten nicht zeichnen.</p>
<blockquote>
  <p>Zehn Minuten schauen, dann fünf Minuten zeichnen.</p>
  <footer>Dorothea Ahrens in einem Brief an eine Schülerin, 1912</footer>
</blockquote>'),
(112, 4, 1, 0, '<dl>
  <dt>Ort</dt><dd>Orangerie, Obergeschoss</dd>
  <dt>Geöffnet</dt><dd>täglich 10 bis 17 Uhr</dd>
  <dt>Bis</dt><dd>31. Dezember 2029</dd>
  <dt>Eintritt</dt><dd>in der Tageskarte enthalten</dd>
  <dt>Zugang</dt><dd>Aufzug im Café</dd>
</dl>'),
(112, 5, 1, 0, '<img src="/images/bg/paper-gardens.svg" width="1200" height="720" alt="Zwei Pflanzenzeichnungen auf einem Holztisch, dazu ein Stift und vier Farbnäpfe">
<figcaption>Mit Absicht halb fertig: Die oberen Blätter blieben Linie.</figcaption>');

-- bg.de.04.01  Die Palme, der ihr Haus zu klein wurde
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(116, 1, 1, 0, 'Die Palme, der ihr Haus zu klein wurde'),
(116, 2, 1, 0, '<p>Sie kam in einem Wäschekorb, überstand zwei Kriege in einer Grube und drückt seit 2009 gegen das Dach.</p>'),
(116, 3, 1, 0, '<p>Im Frühjahr 1888 schenkte der Schiffszimmermann Tjark Behrends dem neuen Garten eine Dattelpalme, so groß wie ein Regenschirm. Er hatte sie in seiner Kammer aus dem Kern einer Dattel gezogen, die er in Tanger gegessen hatte. Der Obergärtner schrieb ins Tagebuch: <q>Eine Palme, gesund, ohne Schild, mit besten Grüßen.</q> Gepflanzt wurde sie dort, wo die Kuppel hinsollte, drei Jahre bevor es eine Kuppel gab.</p>
<h2>Der Winter in der Grube</h2>
<p>1917 fehlte die Kohle. Die Gärtner hoben eine Grube aus, legten die Palme samt Wurzeln hinein und deckten sie mit Laub und alten Teppichen zu. So lag sie bis in den Mai. Als 1945 das meiste Glas zerbrochen war, machten sie es noch einmal genauso, aus dem Gedächtnis.</p>
<h2>Und jetzt?</h2>
<p>Eine Palme hat nur einen Vegetationspunkt; wird er gekappt, stirbt sie. Als 2009 das erste Blatt die Scheiben berührte, gab es drei Möglichkeiten: ein höheres Dach, eine kürzere Palme oder Geduld. Eine Statikerin, zwei Gärtner und ein Seil lockerten auf einer Seite die Wurzeln. Seither neigt sich der Stamm jedes Jahr um eine Handbreit, und die Krone hat wieder Luft.</p>
<p>Im Nordflügel steht eine Tochter, aus einem eigenen Kern gezogen. Sie misst vier Meter und hat Zeit.</p>'),
(116, 4, 1, 0, '<dl>
  <dt>Art</dt><dd><i>Phoenix dactylifera</i></dd>
  <dt>Nummer</dt><dd>1888-0007</dd>
  <dt>Höhe</dt><dd>19,6 Meter</dd>
  <dt>Standort</dt><dd><a href="page(108)">Palmenhaus</a>, mittleres Beet</dd>
</dl>'),
(116, 5, 1, 0, '<img src="/images/bg/palm-house.svg" width="1200" height="720" alt="Eine hohe Dattelpalme, deren Krone die Kuppel ausfüllt">
<figcaption>Nummer 1888-0007, von der Galerie gesehen.</figcaption>');

-- bg.de.99.01  Impressum und Datenschutz
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(121, 1, 1, 0, 'Impressum und Datenschutz'),
(121, 2, 1, 0, '<h2>Herausgeberin</h2>
<p>Stiftung Lindhaven, Orangeriegasse 4, 26871 Lindhaven. Vertreten durch die Direktorin Dr. Marit Oltmanns. Telefon 04961 555 0140, <a href="mailto:garten@lindhaven.example">garten@lindhaven.example</a>.</p>
<h2>Bilder</h2>
<p>Die Illustrationen auf diesen Seiten wurden für diese Website gezeichnet.</p>
<h2>Datenschutz</h2>
<p>Diese Website lädt nichts von anderen Servern. Sie zählt, wie oft eine Seite am Tag gelesen wird, und speichert keine Adressen. Damit die Zählung stimmt, wird ein Sitzungscookie gesetzt; es endet, wenn Sie den Browser schließen.</p>
<p>Wenn Sie uns schreiben, bewahren wir Ihre Nachricht so lange auf, wie wir sie für die Antwort brauchen.</p>');

-- bg.de.99.02  Barrierefreiheit
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(122, 1, 1, 0, 'Barrierefreiheit'),
(122, 2, 1, 0, '<h2>Im Garten</h2>
<p>Zwei Drittel der Wege sind stufenlos und fest. An beiden Toren gibt es eine Klingel in Hüfthöhe. Rollstühle und ein Klapphocker werden kostenlos verliehen. Toiletten für Menschen im Rollstuhl befinden sich am Haupttor und in der Orangerie. Assistenzhunde sind überall willkommen, auch in den Gewächshäusern.</p>
<p>Am zweiten Mittwoch im Monat gibt es einen Rundgang mit Pflanzen zum Tasten und Riechen, siehe <a href="page(111)">Programm</a>.</p>
<h2>Auf dieser Website</h2>
<p>Die Seiten folgen den Richtlinien WCAG 2.2 auf der Stufe AA. Sie lassen sich ohne Maus, ohne Farben, in vierfacher Größe und ohne Skripte lesen. Dunkle Farben und verminderte Bewegung richten sich nach der Einstellung Ihres Geräts.</p>
<p>Etwas funktioniert für Sie nicht? Sagen Sie es uns: <a href="mailto:garten@lindhaven.example">garten@lindhaven.example</a>, Telefon 04961 555 0140. Wir antworten innerhalb von fünf Arbeitstagen.</p>');

-- bg.de.06.01  Für Freunde
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(141, 1, 1, 0, 'Für Freunde'),
(141, 2, 1, 0, '<p>Danke. Ohne die 1.900 Freunde des Gartens blieben zwei der drei Gewächshäuser im Winter geschlossen.</p>'),
(141, 3, 1, 0, '<h2>Für Sie in dieser Jahreszeit</h2>
<ul>
  <li>Frühe Stunde: Das Tor am Fluss öffnet für Freunde um 8 Uhr, täglich außer montags.</li>
  <li>Der <a href="file(001/freundesbrief.txt)">Freundesbrief dieses Quartals</a> mit den Terminen der Pflanzenbörse.</li>
  <li>Am ersten Sonntag im Monat bringen Sie zwei Gäste kostenlos mit. Bitte zeigen Sie am Tor Ihre Karte.</li>
</ul>
<figure>
  <img src="/images/bg/001/new-pond.svg" width="960" height="480" alt="Skizze des neuen Seerosenteichs: ein rundes Becken zwischen zwei Beeten mit einem Holzsteg">
  <figcaption>Der neue Seerosenteich. Baubeginn ist im Frühjahr; diese Skizze ist nur für Freunde.</figcaption>
</figure>');

-- bg.de.06.02  Für Helfer
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(142, 1, 1, 0, 'Für Helfer'),
(142, 2, 1, 0, '<p>Wer wo arbeitet und was wartet.</p>'),
(142, 3, 1, 0, '<div class="table" tabindex="0" role="region" aria-label="Die Arbeit der Woche">
<table>
  <thead><tr><th scope="col">Tag</th><th scope="col">Wo</th><th scope="col">Was</th></tr></thead>
  <tbody>
    <tr><td>Dienstag, 9 bis 12</td><td>Wäldchen</td><td>Brombeeren und Efeu von den Schneeglöckchen nehmen</td></tr>
    <tr><td>Donnerstag, 9 bis 12</td><td>Anzucht</td><td>Umtopfen, Etiketten, Listen</td></tr>
    <tr><td>Samstag, 14 bis 16</td><td>Palmenhaus</td><td>Fragen der Besucher beantworten</td></tr>
  </tbody>
</table>
</div>
<p>Wo noch Plätze frei sind, steht im <a href="file(003/dienstplan.csv)" target="_self">Dienstplan (CSV)</a>. Handschuhe und Werkzeug liegen im Schuppen hinter der Orangerie; der Schlüssel hängt am Tor.</p>');

-- bg.de.06.03  Anmelden
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(144, 1, 1, 0, 'Anmelden'),
(144, 2, 1, 0, '<p>Diese Seiten sind für Freunde und Helfer des Gartens. Name und Kennwort stehen auf Ihrer Karte.</p>'),
(144, 3, 1, 0, '<p>Noch nicht dabei? Fragen Sie am Tor oder schreiben Sie an <a href="mailto:garden@lindhaven.example">garden@lindhaven.example</a>.</p>');

-- bg.de.06.04  Auf Wiedersehen
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(145, 1, 1, 0, 'Auf Wiedersehen'),
(145, 2, 1, 0, '<p>Sie sind abgemeldet.</p>'),
(145, 3, 1, 0, '<p>Weiter zur <a href="page(101)">Startseite</a> oder <a href="page(144)">wieder anmelden</a>.</p>');

