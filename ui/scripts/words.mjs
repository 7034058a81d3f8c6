// The words of the interface: where they stand, which the sources use, and which places they have to fill.
const row = /^\s*\((\d+),\s*'((?:[^']|'')*)',\s*'((?:[^']|'')*)'\)/gm;

// Other tables have rows of the same form.
const rowsOf = (source) =>
  source
    .split(/insert into /i)
    .filter((statement) => statement.startsWith("TORVEX_INTERFACE_VOCAB"))
    .flatMap((statement) => [...statement.matchAll(row)]);

export function wordsOf(sources, faults) {
  const words = new Map();
  for (const source of sources) {
    for (const [, number, en, de] of rowsOf(source)) {
      if (words.has(Number(number))) faults.push(`label ${number} stands in two places of install/rows`);
      words.set(
        Number(number),
        [en, de].map((text) => text.replaceAll("''", "'")),
      );
    }
  }
  return words;
}

export function numbersOf(sources, faults) {
  const names = new Map();
  for (const source of sources) {
    for (const [, name, number] of source.matchAll(/^\s*(\w+):\s*(\d+),?/gm)) {
      if (names.has(name) && names.get(name) !== Number(number)) faults.push(`label ${name} has two numbers`);
      names.set(name, Number(number));
    }
  }
  return names;
}

const placesOf = (text) => [...new Set([...text.matchAll(/\{(\w+)\}/g)].map(([, name]) => name))].sort();

function checked(name, number, words, faults) {
  const [en, de] = words.get(number) ?? ["", ""];
  if (!en) faults.push(`label ${name} (${number}) lacks English`);
  if (!de) faults.push(`label ${name} (${number}) lacks German`);
  if (en && de && placesOf(en).join() !== placesOf(de).join())
    faults.push(`label ${name} (${number}) has other places in German`);
  return placesOf(en);
}

export function placesSource(names, words, faults) {
  const lines = [...names]
    .map(([name, number]) => [number, checked(name, number, words, faults)])
    .filter(([, places]) => places.length)
    .map(([number, places]) => `  ${number}: ${places.map((place) => JSON.stringify(place)).join(" | ")};`);
  return `// Made of the words in install/rows: the places that they have.\nexport interface Places {\n${[...new Set(lines)].join("\n")}\n}\n`;
}
