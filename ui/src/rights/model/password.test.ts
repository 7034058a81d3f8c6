import assert from "node:assert/strict";
import { test } from "node:test";
import { newPassword } from "./password";

test("a new password has 19 characters and nothing that looks alike", () => {
  const password = newPassword();
  assert.match(password, /^[a-km-np-z2-9]{4}(-[a-km-np-z2-9]{4}){3}$/);
  assert.notEqual(newPassword(), password);
});
