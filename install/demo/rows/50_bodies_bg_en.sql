-- The bodies of Lindhaven Botanic Garden.

-- bg.en  Home
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(1, 1, 1, 0, 'Five hectares, eight thousand plants, one very old palm'),
(1, 2, 1, 0, '<p>Walk from the rainforest to the tree line before lunch. The garden by the river has been open to everyone since 1887.</p>'),
(1, 3, 1, 0, '<section class="band">
  <div class="wrap">
    <h2>Three places to begin</h2>
    <ul class="cards">
      <li class="card">
        <img src="/images/bg/palm-house.svg" width="1200" height="720" alt="" loading="lazy">
        <div>
          <h3><a href="page(8)">Palm House</a></h3>
          <p>Warm, damp and green all year. The date palm in the middle was planted before the roof was finished.</p>
        </div>
      </li>
      <li class="card">
        <img src="/images/bg/alpine-garden.svg" width="1200" height="720" alt="" loading="lazy">
        <div>
          <h3><a href="page(9)">Alpine garden</a></h3>
          <p>Four mountain ranges in limestone and granite, at their best from April to June.</p>
        </div>
      </li>
      <li class="card">
        <img src="/images/bg/night-garden.svg" width="1200" height="720" alt="" loading="lazy">
        <div>
          <h3><a href="page(10)">Night garden</a></h3>
          <p>Flowers that open at dusk, and the moths that come to them. Open late in summer.</p>
        </div>
      </li>
    </ul>
  </div>
</section>
<section class="band">
  <div class="wrap">
    <h2>The year in flower</h2>
    <div class="table" tabindex="0" role="region" aria-label="The year in flower, month by month">
      <table class="year">
        <colgroup><col class="plant"><col span="12"></colgroup>
        <thead>
          <tr><td></td><th scope="col">Jan</th><th scope="col">Feb</th><th scope="col">Mar</th><th scope="col">Apr</th><th scope="col">May</th><th scope="col">Jun</th><th scope="col">Jul</th><th scope="col">Aug</th><th scope="col">Sep</th><th scope="col">Oct</th><th scope="col">Nov</th><th scope="col">Dec</th></tr>
        </thead>
        <tbody>
          <tr><th scope="row">Snowdrop <span>woodland</span></th><td class="in first"><span class="visually-hidden">in flower</span></td><td class="in"><span class="visually-hidden">in flower</span></td><td class="in last"><span class="visually-hidden">in flower</span></td><td></td><td></td><td></td><td></td><td></td><td></td><td></td><td></td><td class="bud first last"><span class="visually-hidden">in bud</span></td></tr>
          <tr><th scope="row">Magnolia <span>river gate</span></th><td></td><td class="bud first"><span class="visually-hidden">in bud</span></td><td class="in"><span class="visually-hidden">in flower</span></td><td class="in last"><span class="visually-hidden">in flower</span></td><td></td><td></td><td></td><td></td><td></td><td></td><td></td><td></td></tr>
          <tr><th scope="row">Gentian <span>alpine garden</span></th><td></td><td></td><td class="bud first"><span class="visually-hidden">in bud</span></td><td class="in"><span class="visually-hidden">in flower</span></td><td class="in"><span class="visually-hidden">in flower</span></td><td class="in last"><span class="visually-hidden">in flower</span></td><td></td><td></td><td></td><td></td><td></td><td></td></tr>
          <tr><th scope="row">Iris <span>family beds</span></th><td></td><td></td><td></td><td class="bud first"><span class="visually-hidden">in bud</span></td><td class="in"><span class="visually-hidden">in flower</span></td><td class="in last"><span class="visually-hidden">in flower</span></td><td></td><td></td><td></td><td></td><td></td><td></td></tr>
          <tr><th scope="row">Old roses <span>walled garden</span></th><td></td><td></td><td></td><td></td><td class="bud first"><span class="visually-hidden">in bud</span></td><td class="in"><span class="visually-hidden">in flower</span></td><td class="in last"><span class="visually-hidden">in flower</span></td><td></td><td></td><td></td><td></td><td></td></tr>
          <tr><th scope="row">Giant water lily <span>Palm House</span></th><td></td><td></td><td></td><td></td><td class="bud first"><span class="visually-hidden">in bud</span></td><td class="in"><span class="visually-hidden">in flower</span></td><td class="in"><span class="visually-hidden">in flower</span></td><td class="in"><span class="visually-hidden">in flower</span></td><td class="in last"><span class="visually-hidden">in flower</span></td><td></td><td></td><td></td></tr>
          <tr><th scope="row">Moonflower <span>night garden</span></th><td></td><td></td><td></td><td></td><td></td><td class="bud first"><span class="visually-hidden">in bud</span></td><td class="in"><span class="visually-hidden">in flower</span></td><td class="in"><span class="visually-hidden">in flower</span></td><td class="in last"><span class="visually-hidden">in flower</span></td><td></td><td></td><td></td></tr>
          <tr><th scope="row">Autumn crocus <span>meadow</span></th><td></td><td></td><td></td><td></td><td></td><td></td><td></td><td></td><td class="in first"><span class="visually-hidden">in flower</span></td><td class="in last"><span class="visually-hidden">in flower</span></td><td></td><td></td></tr>
          <tr><th scope="row">Witch hazel <span>river walk</span></th><td class="in first"><span class="visually-hidden">in flower</span></td><td class="in last"><span class="visually-hidden">in flower</span></td><td></td><td></td><td></td><td></td><td></td><td></td><td></td><td></td><td class="bud first"><span class="visually-hidden">in bud</span></td><td class="in last"><span class="visually-hidden">in flower</span></td></tr>
        </tbody>
      </table>
    </div>
    <ul class="key"><li>In bud</li><li class="in">In flower</li></ul>
  </div>
</section>
<section class="band">
  <div class="wrap split">
    <img src="/images/bg/paper-gardens.svg" width="1200" height="720" alt="Plant drawings, a pencil and pans of watercolour on a wooden table" loading="lazy">
    <div>
      <h2>Paper gardens</h2>
      <p>Before photographs, a botanist needed someone who could draw. The Orangery shows ninety sheets from our own collection, among them forty that have never left their boxes.</p>
      <p><a href="page(12)">About the exhibition</a></p>
    </div>
  </div>
</section>
<section class="band">
  <div class="wrap">
    <h2>Come along</h2>
    <ul class="agenda">
      <li><span class="when">Saturdays at 11</span> <span>The garden in an hour, with one of the gardeners</span> <span class="where">Main gate</span></li>
      <li><span class="when">First Sunday at 14</span> <span>Under glass: the three houses from cellar to dome</span> <span class="where">Palm House, western door</span></li>
      <li><span class="when">Sundays at 15</span> <span>Draw along: paper, pencils and a plant</span> <span class="where">Orangery, upper floor</span></li>
      <li><span class="when">Fridays at 21.30 in July and August</span> <span>Moths and moonflowers in the dark</span> <span class="where">River gate</span></li>
    </ul>
    <p>Walks are included in the ticket. <a href="page(11)">Everything that’s on</a></p>
  </div>
</section>
<section class="band">
  <div class="wrap">
    <h2>Notes from the beds</h2>
    <div class="notes">
      <article>
        <h3>Nobody mows on Mondays</h3>
        <p>Since spring the meadow by the river has been cut in strips, one each week, with the scythe. What flies can move to the next strip. It takes five times as long, and there is now a waiting list of people who want to learn it.</p>
        <p class="who">Enno Janssen, meadows and river walk</p>
      </article>
      <article>
        <h3>Ants, hired</h3>
        <p>The violets in the woodland sow themselves with the help of ants, which carry off the seeds for a little fatty handle. We have stopped raking there. Follow an ant in June, and you will see where the violets will be next year.</p>
        <p class="who">Thea Wilken, woodland</p>
      </article>
      <article>
        <h3>A lily keeps its appointment</h3>
        <p>The first giant water lily of the year opened at ten to seven in the evening, as it did last year. By the third evening it had closed and gone under. Two hundred people had come to see it, and nobody spoke above a whisper.</p>
        <p class="who">Jale Demir, glasshouses</p>
      </article>
    </div>
  </div>
</section>
<section class="band">
  <div class="wrap">
    <h2>Good to know</h2>
    <details>
      <summary>May I bring my dog?</summary>
      <p>Yes, on a short lead, but not into the glasshouses and the alpine garden. Guide dogs may go everywhere.</p>
    </details>
    <details>
      <summary>Is there something for children?</summary>
      <p>Ask at the gate for the satchel with a lens, a map and twelve riddles. It is free; you leave a shoe as a deposit, or anything else you’ll miss. The water playground by the weir is open from May to September.</p>
    </details>
    <details>
      <summary>Can I get about with a wheelchair or a pram?</summary>
      <p>Two thirds of the paths are step-free. The leaflet at the gate marks them in green. More under <a href="page(22)">Accessibility</a>.</p>
    </details>
    <details>
      <summary>May I take photographs?</summary>
      <p>As many as you like, for yourself. Tripods stay on the paths. For weddings and film crews please ring us two weeks ahead.</p>
    </details>
    <details>
      <summary>My plant at home is ill. Can you help?</summary>
      <p>On Wednesdays from 14 to 16 somebody sits at the green table in the Orangery who has seen most things before. Bring the plant in a closed bag, so that its guests stay with it.</p>
    </details>
  </div>
</section>
<section class="band">
  <div class="wrap split">
    <div>
      <h2>The research house next door</h2>
      <p>Behind the copper beech stands the Plant Institute. There people count mountain flowers, wake seeds from a century of sleep and keep 612,000 pressed plants. Much of what you read on our labels was found out there.</p>
      <p><a href="page(201)">Visit the Plant Institute</a></p>
    </div>
    <img src="/images/ri/seeds.svg" width="1200" height="720" alt="The spiral of a seed head and three kinds of seed in circles, as under a lens" loading="lazy">
  </div>
</section>'),
(1, 4, 1, 0, '<section>
  <h2>Open every day</h2>
  <p>April to September 9 to 20<br>October to March 9 to 17</p>
</section>
<section>
  <h2>Tickets</h2>
  <p>8 euros, reduced 5 euros<br>Free up to the age of 16</p>
</section>
<section>
  <h2>Getting here</h2>
  <p>Tram 3 to Orangery Lane, then two minutes on foot<br><a href="page(5)">All ways to the garden</a></p>
</section>');

-- bg.en.01.01.01  Opening hours and tickets
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(4, 1, 1, 0, 'Opening hours and tickets'),
(4, 2, 1, 0, '<p>The garden is open every day of the year but one: on 24 December the gardeners have the place to themselves.</p>'),
(4, 3, 1, 0, '<h2>Opening hours</h2>
<div class="table" tabindex="0" role="region" aria-label="Opening hours">
<table>
  <thead>
    <tr><th scope="col">Part of the garden</th><th scope="col">April to September</th><th scope="col">October to March</th></tr>
  </thead>
  <tbody>
    <tr><th scope="row">Grounds</th><td>9 to 20</td><td>9 to 17</td></tr>
    <tr><th scope="row">Glasshouses</th><td>10 to 18</td><td>10 to 16.30</td></tr>
    <tr><th scope="row">Night garden</th><td>Thursday to Saturday until 23, in July and August</td><td>closed</td></tr>
    <tr><th scope="row">Orangery café</th><td>9.30 to 18.30</td><td>9.30 to 16.30</td></tr>
  </tbody>
</table>
</div>
<p>Last admission is an hour before the grounds close. In storms of force 8 and above we close the woodland.</p>
<h2>Tickets</h2>
<div class="table" tabindex="0" role="region" aria-label="Tickets">
<table>
  <thead>
    <tr><th scope="col">Ticket</th><th scope="col" class="number">Price</th></tr>
  </thead>
  <tbody>
    <tr><td>Day ticket</td><td class="number">8.00 €</td></tr>
    <tr><td>Reduced: students, trainees, people with a disability pass</td><td class="number">5.00 €</td></tr>
    <tr><td>Up to the age of 16, and anyone who accompanies a visitor with a disability</td><td class="number">free</td></tr>
    <tr><td>Season ticket, valid for twelve months</td><td class="number">32.00 €</td></tr>
  </tbody>
</table>
</div>
<p>Tickets are sold at both gates, by card or in cash. There is no need to book, except for groups of more than fifteen. On the first Monday of each month everyone pays what they like.</p>');

-- bg.en.01.01.02  Getting here
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(5, 1, 1, 0, 'Getting here'),
(5, 2, 1, 0, '<p>The main gate is in Orangery Lane, ten minutes from the railway station. The river gate lies on the towpath and opens at 10.</p>'),
(5, 3, 1, 0, '<h2>By tram</h2>
<p>Line 3 runs from the station every eight minutes. Get off at Orangery Lane; the gate is behind the chestnut trees. The trams and the stop are step-free.</p>
<h2>By bicycle</h2>
<p>The river route passes the garden. There are sixty stands at each gate, and a pump and tools at the main one. Bicycles stay outside.</p>
<h2>By car</h2>
<p>We have no car park of our own. Use the one at the Weir Bridge, 400 metres away. Four spaces for blue badge holders are next to the main gate.</p>
<h2>On foot</h2>
<p>From the market square follow the mill stream; it takes a quarter of an hour, and the last stretch is under limes planted in 1904.</p>
<p>A map to take along is among the <a href="page(312)">maps and leaflets</a>.</p>');

-- bg.en.02  The garden
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(7, 1, 1, 0, 'The garden'),
(7, 2, 1, 0, '<p>What began as a physic garden behind the hospital is now a collection of 8,400 kinds of plant. You can see most of it in an afternoon, and miss something every time.</p>'),
(7, 3, 1, 0, '<ul class="cards">
  <li class="card">
    <img src="/images/bg/palm-house.svg" width="1200" height="720" alt="">
    <div>
      <h2><a href="page(8)">Palm House</a></h2>
      <p>Twenty-four degrees, rain at ten and at four.</p>
    </div>
  </li>
  <li class="card">
    <img src="/images/bg/alpine-garden.svg" width="1200" height="720" alt="">
    <div>
      <h2><a href="page(9)">Alpine garden</a></h2>
      <p>Cushions, screes and a stream that comes from the mains.</p>
    </div>
  </li>
  <li class="card">
    <img src="/images/bg/night-garden.svg" width="1200" height="720" alt="">
    <div>
      <h2><a href="page(10)">Night garden</a></h2>
      <p>White flowers, strong scents, late hours.</p>
    </div>
  </li>
</ul>
<h2>Find your way</h2>
<figure class="map">
  <img src="/images/bg/garden-map.svg" width="640" height="320" usemap="#garden" alt="Map of the garden. The Palm House stands in the west, the alpine garden in the north-east, the night garden by the river in the south-east.">
  <map name="garden">
    <area shape="rect" coords="40,100,220,240" href="page(8)" alt="Palm House">
    <area shape="rect" coords="280,33,587,153" href="page(9)" alt="Alpine garden">
    <area shape="rect" coords="333,177,600,267" href="page(10)" alt="Night garden">
    <area shape="rect" coords="233,267,320,313" href="page(18)" alt="Garden shop">
  </map>
  <figcaption>Choose a place on the map.</figcaption>
</figure>
<h2>How the beds are arranged</h2>
<p>The oldest part follows families: everything with a daisy flower stands together, everything with a pea flower next to it. From the 1920s the gardeners planted by region, and since 1990 by way of life. So the grass path from the gate to the river leads through three ways of thinking about plants.</p>
<p>Each label gives the scientific name, the family, the place where the plant was collected and a number. With that number the <a href="page(206)">herbarium of the Plant Institute</a> finds the sheet that belongs to it.</p>
<p>Our <a href="file(List of the old trees)">list of the old trees</a> is a table for your own use, with species, girth and year of planting. For reports about the garden there are <a href="page(314)">pictures for the press</a>.</p>');

-- bg.en.02.01  Palm House
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(8, 1, 1, 0, 'Palm House'),
(8, 2, 1, 0, '<p>Iron ribs, 3,100 panes and a date palm that reached the dome in 2009. It has been bending politely ever since.</p>'),
(8, 3, 1, 0, '<h2>What grows here</h2>
<p>The middle belongs to the palms. Around them stand cycads, which look like palms and are closer to pines, and in the north wing tree ferns from the mountains of Java. The south wing holds the pool. From June to September the giant water lily opens there: white on the first evening, pink on the second, gone on the third.</p>
<h2>A house on springs</h2>
<p>Glass and iron move when the sun comes out. The builders of 1891 set each rib on a plate of lead, so that the whole dome can breathe by two centimetres. Stand by the western door at noon in June and you can hear it.</p>
<h2>Please note</h2>
<p>Spectacles and lenses mist over on cold days; there are benches in the porch for waiting until they clear. The floor is wet after the ten o’clock and four o’clock rain.</p>
<p>How the palm came here is told in <a href="page(16)">The palm that outgrew its house</a>.</p>'),
(8, 4, 1, 0, '<dl>
  <dt>Built</dt><dd>1889 to 1891</dd>
  <dt>Height of the dome</dt><dd>21 metres</dd>
  <dt>Warmth</dt><dd>24 °C by day, 18 °C by night</dd>
  <dt>Kinds of plant</dt><dd>1,150</dd>
  <dt>Open</dt><dd>10 to 18, in winter 10 to 16.30</dd>
  <dt>Access</dt><dd>Step-free by the western door</dd>
</dl>'),
(8, 5, 1, 0, '<img src="/images/bg/palm-house.svg" width="1200" height="720" alt="The crown of a date palm with ripening dates below a glass dome">
<figcaption>The date palm fruits in warm years. The dates taste of very little.</figcaption>');

-- bg.en.02.02  Alpine garden
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(9, 1, 1, 0, 'Alpine garden'),
(9, 2, 1, 0, '<p>Six hundred tonnes of rock, brought by rail in 1912, and seven gardeners who know every crack in it.</p>'),
(9, 3, 1, 0, '<h2>Four ranges</h2>
<p>The path climbs from the Pyrenees to the Alps, crosses the Balkans on a bridge of one slab and ends in the Caucasus. Limestone lies on the left, granite on the right. Many genera grow on both sides with different species, and it is worth looking across.</p>
<h2>Why cushions?</h2>
<p>A cushion is a good answer to wind. Inside, the air stands still, and on a sunny day in March it can be fifteen degrees warmer than around it. The plant makes its own soil from its old leaves, and other plants take root in it. Some of ours are sixty years old and no wider than a dinner plate.</p>
<h2>Seed for other gardens</h2>
<p>Each autumn we collect seed and exchange it with 340 gardens all over the world. Plants from the wild are only collected together with the <a href="page(203)">Institute’s survey plots</a>, and never more than one seed head in twenty.</p>'),
(9, 4, 1, 0, '<dl>
  <dt>Laid out</dt><dd>1912</dd>
  <dt>Highest point</dt><dd>7 metres above the lawn</dd>
  <dt>Kinds of plant</dt><dd>2,200</dd>
  <dt>At its best</dt><dd>April to June</dd>
  <dt>Access</dt><dd>Lower path step-free, upper path with 64 steps</dd>
</dl>'),
(9, 5, 1, 0, '<img src="/images/bg/alpine-garden.svg" width="1200" height="720" alt="Cushions with blue, pink and yellow flowers between grey rocks, snowy peaks behind">
<figcaption>May on the limestone side.</figcaption>');

-- bg.en.02.03  Night garden
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(10, 1, 1, 0, 'Night garden'),
(10, 2, 1, 0, '<p>It looks like very little at noon. Come back when the blackbirds stop.</p>'),
(10, 3, 1, 0, '<h2>An hour after sunset</h2>
<p>The evening primrose goes first: its petals unroll within a minute, and you can watch it. Tobacco plants and the moonflower follow. They are white because white is what the last light still shows, and they smell because a moth follows its nose for half a mile.</p>
<h2>Who comes</h2>
<p>We have counted 212 kinds of moth so far. The convolvulus hawk moth crosses the Alps to be here, and has a tongue as long as a finger. Bats hunt over the pool; they are after the moths, and have nothing to do with you.</p>
<h2>Dark on purpose</h2>
<p>There are no lamps in this part of the garden. The path is pale gravel, and after ten minutes your eyes will find it. Please leave torches and telephones in your pockets.</p>'),
(10, 4, 1, 0, '<dl>
  <dt>Laid out</dt><dd>1998</dd>
  <dt>Open late</dt><dd>July and August, Thursday to Saturday until 23</dd>
  <dt>Kinds of moth</dt><dd>212 at the last count</dd>
  <dt>Access</dt><dd>Step-free, firm gravel</dd>
</dl>'),
(10, 5, 1, 0, '<img src="/images/bg/night-garden.svg" width="1200" height="720" alt="White trumpet flowers under a full moon, a hawk moth above them">
<figcaption>Tobacco flowers and a hawk moth, about half past ten.</figcaption>');

-- bg.en.03  What’s on
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(11, 1, 1, 0, 'What’s on'),
(11, 2, 1, 0, '<p>Exhibitions in the Orangery, walks with the people who look after the plants, and a few evenings that need a coat.</p>'),
(11, 3, 1, 0, '<ul class="cards">
  <li class="card">
    <img src="/images/bg/paper-gardens.svg" width="1200" height="720" alt="">
    <div>
      <p class="when">Until the end of 2029</p>
      <h2><a href="page(12)">Paper gardens</a></h2>
      <p>Ninety plant drawings from three centuries.</p>
    </div>
  </li>
  <li class="card">
    <img src="/images/bg/snowdrops.svg" width="1200" height="720" alt="">
    <div>
      <p class="when">Every January</p>
      <h2><a href="page(17)">Counting snowdrops</a></h2>
      <p>How a volunteer’s notebook became a climate record.</p>
    </div>
  </li>
</ul>
<h2>Regular walks</h2>
<div class="table" tabindex="0" role="region" aria-label="Regular walks">
<table>
  <thead><tr><th scope="col">When</th><th scope="col">What</th><th scope="col">Where we meet</th></tr></thead>
  <tbody>
    <tr><td>Saturdays at 11</td><td>The garden in an hour</td><td>Main gate</td></tr>
    <tr><td>First Sunday at 14</td><td>Under glass: the three houses</td><td>Palm House, western door</td></tr>
    <tr><td>Fridays at 21.30 in July and August</td><td>Moths and moonflowers</td><td>River gate</td></tr>
    <tr><td>Second Wednesday at 15</td><td>Walk for visitors with a white cane, with plants to touch and smell</td><td>Main gate</td></tr>
  </tbody>
</table>
</div>
<p>Walks are included in the ticket. Groups write to <a href="mailto:walks@lindhaven.example">walks@lindhaven.example</a>.</p>
<p>What can’t wait for a programme hangs at the gate: the gardeners’ <a href="page(46)">notices</a>.</p>');

-- bg.en.03.01  Paper gardens
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(12, 1, 1, 0, 'Paper gardens'),
(12, 2, 1, 0, '<p>Ninety drawings, three centuries, and one question: what does an eye see that a camera doesn’t?</p>'),
(12, 3, 1, 0, '<p>A photograph shows one plant on one day. A drawing shows what all plants of a kind have in common, opened up, turned round, with bud and fruit on the same stem. That is why botanists still order them.</p>
<h2>The sisters Ahrens</h2>
<p>At the heart of the exhibition are forty sheets by Wilhelmine and Dorothea Ahrens, who drew for the garden from 1893 to 1931. One drew the plant, the other the dissection under the lens; the signatures tell which. Most of these sheets are on show for the first time. To spare the colours we change them every four months.</p>
<h2>Draw along</h2>
<p>On Sundays at 15 paper, pencils and a plant are ready in the last room. Children are as welcome as people who claim that they can’t draw.</p>
<blockquote>
  <p>Look for ten minutes, then draw for five.</p>
  <footer>Dorothea Ahrens, in a letter to a pupil, 1912</footer>
</blockquote>'),
(12, 4, 1, 0, '<dl>
  <dt>Where</dt><dd>Orangery, upper floor</dd>
  <dt>Open</dt><dd>Daily 10 to 17</dd>
  <dt>Until</dt><dd>31 December 2029</dd>
  <dt>Ticket</dt><dd>Included in the day ticket</dd>
  <dt>Access</dt><dd>Lift from the café</dd>
</dl>'),
(12, 5, 1, 0, '<img src="/images/bg/paper-gardens.svg" width="1200" height="720" alt="Two plant drawings on a wooden table with a pencil and four pans of colour">
<figcaption>Half finished on purpose: the upper leaves were left as a line drawing.</figcaption>');

-- bg.en.03.02  A hundred and fifty years
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(13, 1, 1, 0, 'A hundred and fifty years'),
(13, 2, 1, 0, '<p>In 1887 the gates opened for the first time. In 2037 they stay open for a whole night.</p>'),
(13, 3, 1, 0, '<p>The anniversary year begins with the planting of a lime at the river gate and ends with a lantern walk on the last night of December. In between lie twelve months, and each belongs to one of the gardeners, who shows the plant that matters most to them.</p>
<p>The full programme will be on this page from the first day of the year.</p>');

-- bg.en.03.03  Orchid week 2025
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(14, 1, 1, 0, 'Orchid week 2025'),
(14, 2, 1, 0, '<p>Seven days, four hundred orchids and one that smells of chocolate.</p>'),
(14, 3, 1, 0, '<p>From 10 to 16 March 2025 the orchids leave the growing houses, where visitors never see them, and move in with the palms. Growers from eleven countries bring their plants. On Saturday there is a clinic for orchids that won’t flower: bring yours in a paper bag.</p>');

-- bg.en.04.01  The palm that outgrew its house
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(16, 1, 1, 0, 'The palm that outgrew its house'),
(16, 2, 1, 0, '<p>It came in a laundry basket, survived two wars in a pit, and has been pushing at the roof since 2009.</p>'),
(16, 3, 1, 0, '<p>In the spring of 1888 a ship’s carpenter called Tjark Behrends gave the new garden a date palm the size of an umbrella. He had grown it in his cabin from the stone of a date he ate in Tangier. The head gardener wrote in the day book: <q>One palm, healthy, no labels, with compliments.</q> It was planted where the dome was to be, three years before there was a dome.</p>
<h2>The winter in the pit</h2>
<p>In 1917 there was no coal. The gardeners dug a pit, laid the palm down in it, roots and all, and covered it with leaves and old carpets. It lay there until May. In 1945, with most of the glass gone, they did the same again, from memory.</p>
<h2>What now?</h2>
<p>A palm has one growing point; cut it, and the palm dies. So in 2009, when the first leaf touched the glass, there were three choices: a higher roof, a shorter palm, or patience. A structural engineer, two gardeners and a rope loosened the roots on one side. Since then the trunk has been leaning by a hand’s breadth a year, and the crown has air again.</p>
<p>A daughter stands in the north wing, raised from a stone of its own. She is four metres tall, and has time.</p>'),
(16, 4, 1, 0, '<dl>
  <dt>Species</dt><dd><i>Phoenix dactylifera</i></dd>
  <dt>Number</dt><dd>1888-0007</dd>
  <dt>Height</dt><dd>19.6 metres</dd>
  <dt>Where</dt><dd><a href="page(8)">Palm House</a>, middle bed</dd>
</dl>'),
(16, 5, 1, 0, '<img src="/images/bg/palm-house.svg" width="1200" height="720" alt="A tall date palm whose crown fills the dome">
<figcaption>Number 1888-0007, seen from the gallery.</figcaption>');

-- bg.en.04.02  Counting snowdrops
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(17, 1, 1, 0, 'Counting snowdrops'),
(17, 2, 1, 0, '<p>For forty winters one woman wrote down the day on which the first snowdrop opened. Her notebooks now have a catalogue number.</p>'),
(17, 3, 1, 0, '<p>Hanne Lüders came every morning at eight, with a dog, and later with the dog’s successors. She wrote the date, the weather and a number: how many flowers were open between the third and the fourth bench. She didn’t think of it as science. It was, she said, a reason to get up.</p>
<h2>Nineteen days</h2>
<p>When she brought the notebooks to the <a href="page(201)">Plant Institute</a> in 2021, they showed what no instrument in the garden had recorded. The first flower now opens nineteen days earlier than in 1981. The last still fades in the same week of March. So the snowdrops’ season has grown longer, while the bees that visit them have kept to their old dates.</p>
<h2>Count with us</h2>
<p>The benches are still there. From 1 January to 31 March a box with pencils and cards hangs at the third one. Write down the date and the number, and put the card in the slot. Somebody reads every one of them.</p>'),
(17, 4, 1, 0, '<dl>
  <dt>Species</dt><dd><i>Galanthus nivalis</i></dd>
  <dt>Where</dt><dd>Woodland, third to fourth bench</dd>
  <dt>When</dt><dd>January to March</dd>
  <dt>Record</dt><dd>2,914 flowers, 18 February 2019</dd>
</dl>'),
(17, 5, 1, 0, '<img src="/images/bg/snowdrops.svg" width="1200" height="720" alt="A row of snowdrops in the last snow between bare trunks">
<figcaption>The strip between the benches in a late year.</figcaption>');

-- bg.en.05  Garden shop
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(18, 1, 1, 0, 'Garden shop'),
(18, 2, 1, 0, '<p>Seed from our own beds, bulbs in autumn, books all year.</p>'),
(18, 3, 1, 0, '<p>The shop in the old gatehouse is being rebuilt. When it opens again you will find here what is in season, and how to order seed by post.</p>');

-- bg.en.06  Volunteering
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(19, 1, 1, 0, 'Volunteering'),
(19, 2, 1, 0, '<p>Seventy people help us, one morning a week. There is room for more.</p>'),
(19, 3, 1, 0, '<p>Volunteers weed, label, count, show the way and make tea. You don’t need to know plants; you’ll learn them. We ask for one fixed morning a week from March to October.</p>
<p>The form will follow here once the new rota is agreed.</p>');

-- bg.en.99.01  Imprint and privacy
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(21, 1, 1, 0, 'Imprint and privacy'),
(21, 2, 1, 0, '<h2>Publisher</h2>
<p>Lindhaven Foundation, Orangery Lane 4, 26871 Lindhaven. Represented by the director, Dr. Marit Oltmanns. Telephone 04961 555 0140, <a href="mailto:garden@lindhaven.example">garden@lindhaven.example</a>.</p>
<h2>Pictures</h2>
<p>The illustrations on these pages were drawn for this website.</p>
<h2>Privacy</h2>
<p>This website loads nothing from other servers. It counts how often a page is read, by day, and keeps no addresses. A session cookie is set so that the count isn’t wrong; it ends when you close the browser.</p>
<p>If you write to us, we keep your message as long as we need it to answer you.</p>');

-- bg.en.99.02  Accessibility
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(22, 1, 1, 0, 'Accessibility'),
(22, 2, 1, 0, '<h2>In the garden</h2>
<p>Two thirds of the paths are step-free and firm. Both gates have a bell at hip height. Wheelchairs and a folding stool can be borrowed without charge. Toilets for wheelchair users are at the main gate and in the Orangery. Guide dogs are welcome everywhere, in the glasshouses too.</p>
<p>On the second Wednesday of the month there is a walk with plants to touch and smell, see <a href="page(11)">What’s on</a>.</p>
<h2>On this website</h2>
<p>The pages follow the Web Content Accessibility Guidelines 2.2 at level AA. They can be read without a mouse, without colours, at four times the size and without scripts. Dark colours and reduced motion follow the setting of your device.</p>
<p>Something doesn’t work for you? Tell us: <a href="mailto:garden@lindhaven.example">garden@lindhaven.example</a>, telephone 04961 555 0140. We answer within five working days.</p>');

-- bg.en.99.03  Leaflet to print
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(23, 1, 1, 0, 'A walk of one hour'),
(23, 2, 1, 0, '<p>Two kilometres, firm paths, eight stops. Print this sheet or ask for one at the gate.</p>'),
(23, 3, 1, 0, '<section>
  <h2>1. Main gate</h2>
  <p>Two chestnuts from 1887. Look back once you are through: the gap between them frames the dome.</p>
</section>
<section>
  <h2>2. The family beds</h2>
  <p>Every bed one family. Find two plants that don’t look related, and read the label.</p>
</section>
<section>
  <h2>3. Palm House</h2>
  <p>Ten minutes are enough to get warm. Leave by the southern wing, past the pool.</p>
</section>
<section>
  <h2>4. Walled garden</h2>
  <p>Old roses on the left, vegetables nobody grows any more on the right.</p>
</section>
<section>
  <h2>5. Alpine garden</h2>
  <p>Take the lower path. The bridge is one slab of schist and weighs nine tonnes.</p>
</section>
<section>
  <h2>6. River walk</h2>
  <p>Witch hazel in winter, kingfishers with luck.</p>
</section>
<section>
  <h2>7. Woodland</h2>
  <p>Benches three and four: the snowdrop strip.</p>
</section>
<section>
  <h2>8. Orangery</h2>
  <p>Coffee downstairs, drawings upstairs. The tram stop is two minutes away.</p>
</section>');

-- bg.en.99.01  Trial page for designers
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(31, 1, 1, 0, 'Trial page for designers'),
(31, 2, 1, 0, '<p>A page of the system branch: it has a number and a place in the tree, but visitors never reach it. Designers try out their templates here.</p><h2>A heading</h2><p>A paragraph with <em>emphasis</em>, <strong>weight</strong> and <a href="page(1)">a link</a>.</p><ul><li>one</li><li>two</li></ul>');

-- bg.en.08.01  Friends’ corner
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(41, 1, 1, 0, 'Friends’ corner'),
(41, 2, 1, 0, '<p>Thank you. Without the 1,900 friends of the garden, two of the three glasshouses would be closed in winter.</p>'),
(41, 3, 1, 0, '<h2>For you this season</h2>
<ul>
  <li>Early hour: the gate by the river opens for friends at 8, every day but Monday.</li>
  <li>The <a href="file(001/friends-letter.txt)">friends’ letter of this quarter</a>, with the dates of the plant swap.</li>
  <li>Two guests free on the first Sunday of each month. Show your card at the gate.</li>
</ul>
<figure>
  <img src="/images/bg/001/new-pond.svg" width="960" height="480" alt="Sketch of the new lily pond: a round basin between two beds, with a wooden jetty">
  <figcaption>The new lily pond. Work begins in spring; this sketch is for friends only.</figcaption>
</figure>
<p>Do you help in the beds as well? Then the <a href="page(42)">volunteers’ board</a> is for you.</p>');

-- bg.en.08.02  Volunteers’ board
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(42, 1, 1, 0, 'Volunteers’ board'),
(42, 2, 1, 0, '<p>Who works where, and what is waiting.</p>'),
(42, 3, 1, 0, '<div class="table" tabindex="0" role="region" aria-label="The week’s work">
<table>
  <thead><tr><th scope="col">Day</th><th scope="col">Where</th><th scope="col">What</th></tr></thead>
  <tbody>
    <tr><td>Tuesday, 9 to 12</td><td>Woodland</td><td>Bramble and ivy off the snowdrop banks</td></tr>
    <tr><td>Thursday, 9 to 12</td><td>Nursery</td><td>Potting on, labels, lists</td></tr>
    <tr><td>Saturday, 14 to 16</td><td>Palm House</td><td>Answering visitors’ questions</td></tr>
  </tbody>
</table>
</div>
<p>Who still has room is told in the <a href="file(003/rota.csv)" target="_self">rota (CSV)</a>. Gloves and tools are in the shed behind the orangery; the key hangs at the gate, and the <a href="file(Rules of the tool shed)" target="_self">rules of the tool shed</a> hang inside.</p>');

-- bg.en.08.03  Log in
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(44, 1, 1, 0, 'Log in'),
(44, 2, 1, 0, '<p>These pages are for friends and volunteers of the garden. Your name and password are on your card.</p>'),
(44, 3, 1, 0, '<p>Not a friend yet? Ask at the gate, or write to <a href="mailto:garden@lindhaven.example">garden@lindhaven.example</a>.</p>');

-- bg.en.08.04  Goodbye
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(45, 1, 1, 0, 'Goodbye'),
(45, 2, 1, 0, '<p>You are logged out.</p>'),
(45, 3, 1, 0, '<p>Go on to <a href="page(1)">the home page</a>, or <a href="page(44)">log in again</a>.</p>');

-- bg.en.03.04  Notices
insert into TORVEX_BODIES_DESIGN (pageId, bodyId, bodyType, feedId, bodyText) values
(46, 1, 1, 0, 'Notices'),
(46, 2, 1, 0, '<p>What the gardeners pinned to the board this week.</p>'),
(46, 3, 2, 1, '<p>The board is being renewed. Please come back later.</p>');

