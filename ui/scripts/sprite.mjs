// One file of symbols made of many pictures.
import { existsSync, readFileSync } from "node:fs";

function symbolOf(name, source) {
  const [, attributes, content] = /<svg([^>]*)>([\s\S]*)<\/svg>/.exec(source);
  const viewBox = /viewBox="([^"]*)"/.exec(attributes)[1];
  const inner = content.replace(/<title>[\s\S]*?<\/title>/, "").replace(/\s*\n\s*/g, "");
  return `<symbol id="${name}" viewBox="${viewBox}">${inner}</symbol>`;
}

export function spriteOf(names, pathOf, faults) {
  const symbols = names.flatMap((name) => {
    const path = pathOf(name);
    if (existsSync(path)) return [symbolOf(name, readFileSync(path, "utf8"))];
    faults.push(`there is no icon ${name}`);
    return [];
  });
  return `<svg xmlns="http://www.w3.org/2000/svg">\n${symbols.join("\n")}\n</svg>\n`;
}
