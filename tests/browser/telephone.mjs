// A telephone that shows codes (RFC 6238), as authors and visitors have one.
import { createHmac } from "node:crypto";

const letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ234567";

function bytesOf(secret) {
  const bits = [...secret.replaceAll(" ", "")].map((letter) => letters.indexOf(letter).toString(2).padStart(5, "0")).join("");
  return Buffer.from(bits.match(/.{8}/g).map((byte) => Number.parseInt(byte, 2)));
}

export const stepNow = () => Math.floor(Date.now() / 30000);

// A code of a step counts once; those of its neighbours count, too.
export function codeAt(secret, step) {
  const message = Buffer.alloc(8);
  message.writeBigUInt64BE(BigInt(step));
  const hash = createHmac("sha1", bytesOf(secret)).update(message).digest();
  const number = hash.readUInt32BE(hash[19] & 15) & 0x7fffffff;
  return String(number % 1_000_000).padStart(6, "0");
}
