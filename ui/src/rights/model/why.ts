/** Why somebody may do something: the answer of the server, read. No DOM. */

export interface WhyRow {
  readonly state: string;
  readonly roleId: number;
  readonly role: string;
  readonly places: string;
  readonly rights: string;
  readonly titles: string;
}

export interface Reason {
  readonly state: "gives" | "outside" | "elsewhere" | "otherRights" | "nothing";
  readonly roleId: number;
  readonly role: string;
  readonly places: readonly string[];
  readonly rights: readonly string[];
  readonly titles: string;
}

export interface Why {
  readonly yes: boolean;
  /** The task or the access that was asked about. */
  readonly what: string;
  /** The page's node, or the entry's place. */
  readonly where: string;
  readonly title: string;
  /** What decides it without any role: "administrator", "noLogin", "noPage", "noTask", "notOffered", or "". */
  readonly plain: string;
  readonly reasons: readonly Reason[];
  /** Where she would need it, when a role could give it. */
  readonly needs: string | undefined;
}

const STATES = ["gives", "outside", "elsewhere", "otherRights", "nothing"];
const listOf = (text: string): string[] => (text === "" ? [] : text.split(","));

export function whyOf(rows: readonly WhyRow[]): Why {
  const [verdict, ...rest] = rows;
  const reasons = rest
    .filter(({ state }) => STATES.includes(state))
    .map((row) => ({
      state: row.state as Reason["state"],
      roleId: row.roleId,
      role: row.role,
      places: row.state === "gives" && row.places === "" ? [""] : listOf(row.places),
      rights: listOf(row.rights),
      titles: row.titles,
    }));
  return {
    yes: verdict?.state === "yes",
    what: verdict?.rights ?? "",
    where: verdict?.places ?? "",
    title: verdict?.titles ?? "",
    plain: rest.find(({ state }) => !STATES.includes(state) && state !== "needs")?.state ?? "",
    // What gives it comes first: that is the answer.
    reasons: [...reasons].sort((one, other) => STATES.indexOf(one.state) - STATES.indexOf(other.state)),
    needs: rest.find(({ state }) => state === "needs")?.places,
  };
}
