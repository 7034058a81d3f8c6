-- The bodies of Lindhaven Plant Institute.

-- ri.en  Institute
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(201, 1, 1, 0, 'We measure slowly'),
(201, 2, 1, 0, '<p>Some of our series have been running since 1998, some of our seeds have been asleep for a century. The Plant Institute is the research house of the <a href="page(1)">Botanic Garden</a>.</p>'),
(201, 3, 1, 0, '<section class="band">
  <div class="wrap">
    <h2>What we work on</h2>
    <ul class="cards">
      <li class="card">
        <img src="/images/ri/transect.svg" width="1200" height="720" alt="">
        <div>
          <h3><a href="page(203)">Plants on the move</a></h3>
          <p>Seven plots between 1,180 and 2,390 metres, counted every year since 1998.</p>
        </div>
      </li>
      <li class="card">
        <img src="/images/ri/seeds.svg" width="1200" height="720" alt="">
        <div>
          <h3><a href="page(204)">Why seeds wait</a></h3>
          <p>What wakes a seed, and what keeps it from waking in the wrong year.</p>
        </div>
      </li>
      <li class="card">
        <img src="/images/ri/herbarium-sheet.svg" width="900" height="1000" alt="">
        <div>
          <h3><a href="page(206)">Herbarium</a></h3>
          <p>612,000 sheets from 1764 until last week, more than half of them photographed.</p>
        </div>
      </li>
    </ul>
  </div>
</section>
<section class="band">
  <div class="wrap">
    <h2>From the Institute</h2>
    <ul class="papers">
      <li><span class="when">March 2026</span> The survey of 2025 has been checked and is <a href="file(ri/transect-1998-2025.csv)" target="_self">free to use</a>. All seven plots lie above the figures of 2010, but for the lowest.</li>
      <li><span class="when">January 2026</span> Sheet number 350,000 has been photographed: a common daisy from the castle ditch, pressed by a child in 1871.</li>
      <li><span class="when">October 2025</span> Two of the barley grains from the bricked-up sample of 1923 have germinated. The other 198 haven’t.</li>
    </ul>
  </div>
</section>'),
(201, 4, 1, 0, '<dl class="counts">
  <div><dt>Sheets in the herbarium</dt><dd>612,000</dd></div>
  <div><dt>Seed samples</dt><dd>9,480</dd></div>
  <div><dt>Years in the field</dt><dd>28</dd></div>
</dl>');

-- ri.en.01.01  Plants on the move
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(203, 1, 1, 0, 'Plants on the move'),
(203, 2, 1, 0, '<p>Mountain plants answer a warmer climate by climbing. We want to know who climbs, how fast, and who is already at the top.</p>'),
(203, 3, 1, 0, '<h2>What we do</h2>
<p>Every July two people kneel on each of seven plots for two days and write down each plant. The method hasn’t changed since 1998, and neither has the grid of string. One of the two observers is always someone who was there in the year before, so that eyes can be compared as well.</p>
<h2>What we see</h2>
<div class="table" tabindex="0" role="region" aria-label="Kinds of vascular plant in seven plots of 100 square metres">
<table class="bars">
  <caption>Kinds of vascular plant in seven plots of 100 square metres</caption>
  <thead>
    <tr><th scope="col">Plot</th><th scope="col" class="number">Altitude</th><th scope="col" class="number">1998</th><th scope="col" class="number">2010</th><th scope="col" class="number">2025</th><td class="bar"><span class="visually-hidden">2025 as a bar</span></td></tr>
  </thead>
  <tbody>
    <tr><th scope="row">P1</th><td class="number">1,180 m</td><td class="number">61</td><td class="number">58</td><td class="number">55</td><td class="bar"><svg viewBox="0 0 100 6" preserveAspectRatio="none" aria-hidden="true"><rect width="90" height="6"/></svg></td></tr>
    <tr><th scope="row">P2</th><td class="number">1,420 m</td><td class="number">57</td><td class="number">58</td><td class="number">60</td><td class="bar"><svg viewBox="0 0 100 6" preserveAspectRatio="none" aria-hidden="true"><rect width="98" height="6"/></svg></td></tr>
    <tr><th scope="row">P3</th><td class="number">1,660 m</td><td class="number">49</td><td class="number">52</td><td class="number">57</td><td class="bar"><svg viewBox="0 0 100 6" preserveAspectRatio="none" aria-hidden="true"><rect width="93" height="6"/></svg></td></tr>
    <tr><th scope="row">P4</th><td class="number">1,880 m</td><td class="number">41</td><td class="number">46</td><td class="number">53</td><td class="bar"><svg viewBox="0 0 100 6" preserveAspectRatio="none" aria-hidden="true"><rect width="87" height="6"/></svg></td></tr>
    <tr><th scope="row">P5</th><td class="number">2,090 m</td><td class="number">30</td><td class="number">36</td><td class="number">45</td><td class="bar"><svg viewBox="0 0 100 6" preserveAspectRatio="none" aria-hidden="true"><rect width="74" height="6"/></svg></td></tr>
    <tr><th scope="row">P6</th><td class="number">2,260 m</td><td class="number">19</td><td class="number">25</td><td class="number">33</td><td class="bar"><svg viewBox="0 0 100 6" preserveAspectRatio="none" aria-hidden="true"><rect width="54" height="6"/></svg></td></tr>
    <tr><th scope="row">P7</th><td class="number">2,390 m</td><td class="number">9</td><td class="number">14</td><td class="number">21</td><td class="bar"><svg viewBox="0 0 100 6" preserveAspectRatio="none" aria-hidden="true"><rect width="34" height="6"/></svg></td></tr>
  </tbody>
</table>
</div>
<p>The four highest plots gain most. On P7 the number of species has more than doubled. The newcomers are not rare: they are meadow plants that used to stop three hundred metres further down.</p>
<p>On P1 the number falls. There the trees have come up, and it has become too dark for what grew there.</p>
<h2>What we don’t know</h2>
<p>More species isn’t the same as better off. The old inhabitants of the summit have nowhere to go, and a cushion that is fifty years old takes a long time to die. We shall count it as present for years in which its case is already decided.</p>
<p>All figures: <a href="file(ri/transect-1998-2025.csv)" target="_self">table of the plots, 1998 to 2025 (CSV)</a>.</p>'),
(203, 4, 1, 0, '<dl>
  <dt>Led by</dt><dd>Prof. Jorun Vestergaard</dd>
  <dt>Since</dt><dd>1998</dd>
  <dt>Plots</dt><dd>7 of 10 × 10 metres</dd>
  <dt>Range</dt><dd>1,180 to 2,390 metres</dd>
  <dt>Data</dt><dd>CC BY 4.0</dd>
</dl>'),
(203, 5, 1, 0, '<img src="/images/ri/transect.svg" width="1200" height="720" alt="Contour map of a mountain with a dotted line through seven survey plots from the valley to the summit">
<figcaption>The line of plots on the Hohe Kanzel.</figcaption>');

-- ri.en.01.02  Why seeds wait
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(204, 1, 1, 0, 'Why seeds wait'),
(204, 2, 1, 0, '<p>A seed that wakes in a warm week of January is lost. So most seeds don’t trust a warm week.</p>'),
(204, 3, 1, 0, '<h2>Three locks</h2>
<p>A seed may be shut in by a coat that water can’t pass, by an embryo that isn’t finished, or by a substance that has to be washed out. Many have two of these locks, some all three. In the cold room we open them one by one and note which key fits: frost, smoke, light, a month of wet, the stomach of a thrush.</p>
<h2>The sample of 1923</h2>
<p>When the seed room was rebuilt in 1923, somebody bricked up a box with twenty bottles and left a note: open one every five years. The note was forgotten, and the box found in 1998. We have kept to the plan since then, at the pace of the note.</p>
<div class="table" tabindex="0" role="region" aria-label="Germination from the bottles opened so far">
<table>
  <caption>Germination from the bottles opened so far</caption>
  <thead><tr><th scope="col">Bottle</th><th scope="col">Opened</th><th scope="col">Species</th><th scope="col" class="number">Germinated of 200</th></tr></thead>
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
<p>The last bottle is due in 2095. We shall have to find someone.</p>
<p>What we can spare of younger seed is in the list of the <a href="page(240)">seed exchange</a>.</p>'),
(204, 4, 1, 0, '<dl>
  <dt>Led by</dt><dd>Dr. Amadou Keita</dd>
  <dt>Seed samples</dt><dd>9,480 of 4,100 species</dd>
  <dt>Kept at</dt><dd>−18 °C, 15 % humidity</dd>
  <dt>Next bottle</dt><dd>2030</dd>
</dl>'),
(204, 5, 1, 0, '<img src="/images/ri/seeds.svg" width="1200" height="720" alt="The spiral of a seed head and three kinds of seed in circles, as under a lens">
<figcaption>Sunflower, maple, dandelion, castor bean.</figcaption>');

-- ri.en.02  Herbarium
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(206, 1, 1, 0, 'Herbarium'),
(206, 2, 1, 0, '<p>A pressed plant, a label, a date. That is all, and it is the only proof that a plant once grew in a place.</p>'),
(206, 3, 1, 0, '<h2>What is in the cabinets</h2>
<p>The oldest sheet is a bog myrtle from 1764, collected where the railway station is now. The collection covers north-western Germany without a gap from 1820, and the mountains from the Pyrenees to the Caucasus from 1905. About 1,900 sheets are types: the specimens after which a species was named.</p>
<h2>Photographed and measured</h2>
<p>Since 2014 three people have been photographing sheet by sheet, with a scale and a strip of colours. So far 350,000 are done. Leaf area, flowering state and traces of grazing are measured from the pictures; nobody thought of that when the plants were pressed.</p>
<h2>Using the collection</h2>
<p>The reading room is open to anyone with a question. How to come, and how institutions borrow sheets, is told in <a href="page(207)">Visits and loans</a>.</p>'),
(206, 4, 1, 0, '<dl>
  <dt>Founded</dt><dd>1887, with older parts</dd>
  <dt>Sheets</dt><dd>612,000</dd>
  <dt>Types</dt><dd>about 1,900</dd>
  <dt>Curator</dt><dd>Dr. Ilse Tammena</dd>
  <dt>Post</dt><dd><a href="mailto:herbarium@lindhaven.example">herbarium@<wbr>lindhaven.example</a></dd>
</dl>'),
(206, 5, 1, 0, '<img src="/images/ri/herbarium-sheet.svg" width="900" height="1000" alt="A pressed fern on a herbarium sheet with label, colour scale and bar code">
<figcaption>Male fern, collected in 1907 in the woodland of the garden.</figcaption>');

-- ri.en.02.01  Visits and loans
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(207, 1, 1, 0, 'Visits and loans'),
(207, 2, 1, 0, '<p>Come and look, or let the sheets come to you. Both take about two weeks’ notice.</p>'),
(207, 3, 1, 0, '<h2>Visits</h2>
<p>The reading room has six tables with daylight and lenses. It is open from Tuesday to Thursday, 9 to 16. Write what you wish to see; we bring the sheets up from the cabinets and let them adjust to the room for a day. Bags and coats stay outside, because of the beetles.</p>
<h2>Loans</h2>
<p>We lend to institutions, for six months, up to sixty sheets at a time. Types don’t travel; ask for the photographs. The conditions fit on one page: <a href="file(ri/loan-conditions.txt)" target="_self">Loan conditions (text)</a>.</p>
<h2>Samples</h2>
<p>A piece of leaf for genetic work may be taken from sheets with more than one plant, after asking. What you find out goes on the sheet, and so does your name.</p>');

-- ri.en.03  Publications
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(208, 1, 1, 0, 'Publications'),
(208, 2, 1, 0, '<p>Papers, data sets and the yearly report. What we publish is free to read.</p>'),
(208, 3, 1, 0, '<h2>Papers</h2>
<ul class="papers">
  <li><span class="when">2026</span> J. Vestergaard, A. Keita, L. Brandt: Twenty-eight summers on the Hohe Kanzel. Species gain and delayed loss along an altitude gradient. Lindhaven Contributions 61, 3 to 44.</li>
  <li><span class="when">2025</span> A. Keita: Sleep in stages. Two-step dormancy in mountain sedges. Lindhaven Contributions 60, 12 to 29.</li>
  <li><span class="when">2024</span> I. Tammena, R. Oyelaran: What pressed leaves remember. Grazing marks in 40,000 herbarium sheets. Lindhaven Contributions 59, 55 to 81.</li>
  <li><span class="when">2022</span> H. Lüders, J. Vestergaard: Forty winters between two benches. First flowering of snowdrops, 1981 to 2021. Lindhaven Contributions 57, 1 to 9.</li>
</ul>
<h2>Data</h2>
<ul>
  <li><a href="file(ri/transect-1998-2025.csv)" target="_self">Survey plots 1998 to 2025 (CSV)</a>, with the project <a href="page(203)">Plants on the move</a></li>
  <li><a href="page(318)">All tables, with the methods behind them</a></li>
</ul>');

-- ri.en.04  Field course 2027
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(209, 1, 1, 0, 'Field course 2027'),
(209, 2, 1, 0, '<p>Ten days on the mountain, twelve places, one hand lens each.</p>'),
(209, 3, 1, 0, '<p>The course introduces students to the plants of the survey plots and to the craft of counting them. Dates and fees are still being agreed with the mountain hut.</p>');

-- ri.en.99.01  Imprint and accessibility
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(211, 1, 1, 0, 'Imprint and accessibility'),
(211, 2, 1, 0, '<h2>Publisher</h2>
<p>Lindhaven Foundation, Orangery Lane 12, 26871 Lindhaven. Director of the Institute: Prof. Jorun Vestergaard. Telephone 04961 555 0180, <a href="mailto:institute@lindhaven.example">institute@lindhaven.example</a>.</p>
<h2>Data protection</h2>
<p>This website loads nothing from other servers and keeps no addresses. It counts how often a page is read, by day.</p>
<h2>Accessibility</h2>
<p>The pages follow the Web Content Accessibility Guidelines 2.2 at level AA. Each chart stands next to the table that it was drawn from. If something keeps you from using these pages, please tell us: <a href="mailto:institute@lindhaven.example">institute@lindhaven.example</a>.</p>
<h2>Citation</h2>
<p>Figures and data may be used under CC BY 4.0, with the name of the Institute and the year.</p>');

-- ri.en.99.01  Trial page for designers
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(231, 1, 1, 0, 'Trial page for designers'),
(231, 2, 1, 0, '<p>A page of the system branch: visitors never reach it. Designers try out their templates here.</p>');

-- ri.en.06  Seed exchange
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(240, 1, 1, 0, 'Seed exchange'),
(240, 2, 1, 0, '<p>Seeds that we can spare this year, straight from the list of the seed bank. Write to us with the number.</p>'),
(240, 3, 3, 1, '<p>The list is being renewed. Please come back later.</p>');

