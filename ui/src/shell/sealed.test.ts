import assert from "node:assert/strict";
import { webcrypto } from "node:crypto";
import { test } from "node:test";
import { seal, unseal } from "./sealed";

// Node 18 has it, but not under the name that browsers give it.
if (!globalThis.crypto) Object.defineProperty(globalThis, "crypto", { value: webcrypto });

test("a token comes out with the secret that it was closed with, and with no other", async () => {
  const sealed = await seal("third", "first");
  assert.equal(await unseal(sealed, "first"), "third");
  assert.equal(await unseal(sealed, "second"), "");
  assert.equal(await unseal(sealed, ""), "");
});

test("what was changed on its way, or isn't sealed at all, is nothing", async () => {
  const { iv, closed } = await seal("third", "first");
  const other = new Uint8Array(closed.slice(0));
  other[0] = (other[0] ?? 0) ^ 1;
  assert.equal(await unseal({ iv, closed: other.buffer }, "first"), "");
  assert.equal(await unseal({} as Awaited<ReturnType<typeof seal>>, "first"), "");
});

test("the same token is never closed twice to the same", async () => {
  const [one, two] = [await seal("third", "first"), await seal("third", "first")];
  assert.notDeepEqual(new Uint8Array(one.closed), new Uint8Array(two.closed));
});
