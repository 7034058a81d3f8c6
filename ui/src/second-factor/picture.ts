/** The picture that an application scans. */

import { html, type TemplateResult } from "lit";
import { encode } from "uqr";
import { L, t } from "../labels";

/** One path of squares, with the quiet edge that scanners need. */
export function picture(address: string): TemplateResult {
  const { data, size } = encode(address, { ecc: "M", border: 4 });
  const squares = data.flatMap((row, y) => row.flatMap((isDark, x) => (isDark ? [`M${x} ${y}h1v1h-1z`] : [])));
  return html`<svg class="factor-picture" role="img" aria-label=${t(L.factorPicture)} viewBox="0 0 ${size} ${size}" shape-rendering="crispEdges">
    <rect width=${size} height=${size} fill="#fff"></rect><path d=${squares.join("")} fill="#000"></path></svg>`;
}
