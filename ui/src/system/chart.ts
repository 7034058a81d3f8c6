/** Numbers over time, drawn; whoever can't see it has the table beside it. */

import { html, nothing, svg, type TemplateResult } from "lit";
import { number } from "../labels";
import { type Point, topOf } from "./model/series";

export interface ChartOptions {
  readonly points: readonly Point[];
  readonly value: (point: Point) => number;
  readonly before?: (point: Point) => number;
  readonly nameOf: (period: string) => string;
  /** What is told of a point: its name and numbers. */
  readonly tell: (point: Point) => string;
  readonly tellPublished: (point: Point) => string;
}

const WIDTH = 1000;
const HEIGHT = 200;
/** More than these are drawn as a line. */
const MOST_BARS = 62;

export function chart({ points, value, before, nameOf, tell, tellPublished }: ChartOptions): TemplateResult {
  const top = topOf(Math.max(0, ...points.map(value), ...(before ? points.map(before) : [])));
  const step = WIDTH / Math.max(1, points.length);
  const x = (at: number) => (at + 0.5) * step;
  const y = (amount: number) => HEIGHT - (amount / top) * HEIGHT;
  const line = (of: (point: Point) => number) =>
    points.map((point, at) => `${at === 0 ? "M" : "L"}${x(at).toFixed(1)} ${y(of(point)).toFixed(1)}`).join("");
  const bars = points.length <= MOST_BARS;
  const published = points.flatMap((point, at) =>
    point.published > 0
      ? [
          svg`<g class="chart-published"><line x1=${x(at)} x2=${x(at)} y1="0" y2=${HEIGHT}></line><title>${nameOf(point.period)}: ${tellPublished(point)}</title></g>`,
        ]
      : [],
  );
  const shapes = bars
    ? points.map(
        (point, at) =>
          svg`<rect class="chart-bar" x=${at * step + step * 0.15} width=${step * 0.7} y=${y(value(point))} height=${HEIGHT - y(value(point))}><title>${tell(point)}</title></rect>`,
      )
    : svg`<path class="chart-line" d=${line(value)}></path>`;
  return html`<div class="chart" aria-hidden="true">
    <p class="chart-top note">${number(top)}</p>
    <svg viewBox="0 0 ${WIDTH} ${HEIGHT}" preserveAspectRatio="none">
      <line class="chart-grid" x1="0" x2=${WIDTH} y1="0" y2="0"></line><line class="chart-grid" x1="0" x2=${WIDTH} y1=${HEIGHT / 2} y2=${HEIGHT / 2}></line><line class="chart-grid" x1="0" x2=${WIDTH} y1=${HEIGHT} y2=${HEIGHT}></line>
      ${shapes}${before ? svg`<path class="chart-before" d=${line(before)}></path>` : nothing}${published}
      ${bars ? nothing : points.map((point, at) => svg`<rect class="chart-touch" x=${at * step} width=${step} y="0" height=${HEIGHT}><title>${tell(point)}</title></rect>`)}
    </svg>
    <p class="chart-ends note"><span>${nameOf(points[0]?.period ?? "")}</span><span>${nameOf(points.at(-1)?.period ?? "")}</span></p></div>`;
}
