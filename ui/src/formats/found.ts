import type { PageWord } from "./status";

/** A row of `desk.find`. */
export interface Found {
  readonly kind: "page" | "image" | "document";
  readonly pageId: number;
  readonly siteId: string;
  readonly lang: string;
  readonly nodeId: string;
  readonly title: string;
  readonly path: string;
  /** Media have none. */
  readonly state: PageWord | "";
  readonly isLive: boolean;
  readonly excerpt: string;
}
