// How well words stand out from what is behind them, by WCAG's formula.

export type Color = [red: number, green: number, blue: number, alpha: number];

export function colorOf(text: string): Color | null {
  const [, list] = /^rgba?\(([^)]*)\)$/.exec(text) ?? [];
  if (!list) return null;
  const [red = 0, green = 0, blue = 0, alpha = 1] = list.split(/[\s,/]+/).map(Number);
  return [red, green, blue, alpha].some(Number.isNaN) ? null : [red, green, blue, alpha];
}

export function over([r, g, b, a]: Color, below: Color): Color {
  const mix = (one: number, other: number) => one * a + other * (1 - a);
  return [mix(r, below[0]), mix(g, below[1]), mix(b, below[2]), 1];
}

function luminance([red, green, blue]: Color): number {
  const part = (value: number) => {
    const share = value / 255;
    return share <= 0.04045 ? share / 12.92 : ((share + 0.055) / 1.055) ** 2.4;
  };
  return 0.2126 * part(red) + 0.7152 * part(green) + 0.0722 * part(blue);
}

export function ratio(one: Color, other: Color): number {
  const [light, dark] = [luminance(one), luminance(other)].sort((a, b) => b - a) as [number, number];
  return (light + 0.05) / (dark + 0.05);
}

/** Large words need less. */
export const needed = (pixels: number, weight: number) =>
  pixels >= 24 || (pixels >= 18.66 && weight >= 700) ? 3 : 4.5;
