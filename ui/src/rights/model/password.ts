/** A password that a person can copy from paper: without letters that look alike, in groups. */

const LETTERS = "abcdefghijkmnpqrstuvwxyz23456789";
const GROUPS = 4;
const IN_A_GROUP = 4;

/** Sixteen letters of 32, 80 bits, and three strokes between them: 19 characters. */
export function newPassword(
  random: (bytes: Uint8Array) => Uint8Array = (bytes) => crypto.getRandomValues(bytes),
): string {
  const letters = [...random(new Uint8Array(GROUPS * IN_A_GROUP))].map((byte) => LETTERS[byte % LETTERS.length]);
  const groups = Array.from({ length: GROUPS }, (_, at) =>
    letters.slice(at * IN_A_GROUP, (at + 1) * IN_A_GROUP).join(""),
  );
  return groups.join("-");
}
