import type { Found } from "../formats/found";

/** What a link can lead to, wherever it was found. */
export type LinkTarget = Omit<Found, "state" | "excerpt">;
