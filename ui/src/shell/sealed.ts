/**
 * A token on its way to the other tabs. Whatever runs on this origin can hear what tabs tell each other, a script of a
 * public page too: so it is closed with the token that it follows, which only documents of ours have ever had.
 */

export interface Sealed {
  readonly iv: Uint8Array<ArrayBuffer>;
  readonly closed: ArrayBuffer;
}

const text = new TextEncoder();

async function keyOf(secret: string): Promise<CryptoKey> {
  const hash = await crypto.subtle.digest("SHA-256", text.encode(`torvex.token ${secret}`));
  return crypto.subtle.importKey("raw", hash, "AES-GCM", false, ["encrypt", "decrypt"]);
}

/** Browsers have what this needs only where nobody listens on the line. */
export const canSeal = (): boolean => globalThis.crypto?.subtle !== undefined;

export async function seal(token: string, secret: string): Promise<Sealed> {
  const iv = crypto.getRandomValues(new Uint8Array(12));
  const closed = await crypto.subtle.encrypt({ name: "AES-GCM", iv }, await keyOf(secret), text.encode(token));
  return { iv, closed };
}

/** Nothing when it was closed with another secret. */
export async function unseal({ iv, closed }: Sealed, secret: string): Promise<string> {
  try {
    const open = await crypto.subtle.decrypt({ name: "AES-GCM", iv }, await keyOf(secret), closed);
    return new TextDecoder().decode(open);
  } catch {
    return "";
  }
}
