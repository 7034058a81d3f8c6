-- What the pictures show, for those who don't see them. One has none yet, so that authors find something to do.
update TORVEX_IMAGES set img_alt = 'Mountains with snow, and in front of them rocks with cushions of small flowers'
  where img_site = 'bg' and img_filename in ('alpine-garden.svg', '002/002/alpine-garden.jpg');
update TORVEX_IMAGES set img_alt = 'Map: the Palm House on the left, the alpine garden above, the night garden on the right, the shop by the water'
  where img_site = 'bg' and img_filename = 'garden-map.svg';
update TORVEX_IMAGES set img_alt = 'A white glasshouse with a dome, at the end of a path between lawns, in the evening sun'
  where img_site = 'bg' and img_filename in ('glasshouse.svg', '002/001/glasshouse.jpg');
update TORVEX_IMAGES set img_alt = 'White lilies under a full moon, with a moth'
  where img_site = 'bg' and img_filename in ('night-garden.svg', '002/002/night-garden.jpg');
update TORVEX_IMAGES set img_alt = 'The crown of a palm under a glass roof, between two ferns'
  where img_site = 'bg' and img_filename in ('palm-house.svg', '002/001/palm-house.jpg');
update TORVEX_IMAGES set img_alt = 'Two botanical drawings on a table, with a pencil and colours'
  where img_site = 'bg' and img_filename = 'paper-gardens.svg';
update TORVEX_IMAGES set img_alt = 'Snowdrops in the snow before bare trunks'
  where img_site = 'bg' and img_filename in ('snowdrops.svg', '002/002/snowdrops.jpg');
update TORVEX_IMAGES set img_alt = 'A pressed fern on a sheet with label, colour scale and bar code'
  where img_site = 'ri' and img_filename in ('herbarium-sheet.svg', '001/male-fern-1907.jpg');
update TORVEX_IMAGES set img_alt = 'Seeds in a spiral, and three of them enlarged'
  where img_site = 'ri' and img_filename = 'seeds.svg';
update TORVEX_IMAGES set img_alt = 'Contour lines of a hill, and a dotted line of seven plots up to its top'
  where img_site = 'ri' and img_filename = 'transect.svg';
