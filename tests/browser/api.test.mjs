import assert from "node:assert/strict";
import { describe, test } from "node:test";
import { Validator } from "@seriousme/openapi-schema-validator";
import { servedDemo } from "./support.mjs";

describe("the description of the interface for programs", () => {
  const site = servedDemo();
  const description = async () => (await fetch(`${site.address}/torvex/api/openapi.json`)).json();

  test("is valid OpenAPI 3.1", async () => {
    const result = await new Validator().validate(await description());
    assert.deepEqual(result.errors ?? [], []);
    assert.ok(result.valid);
  });

  test("is told from one that isn't", async () => {
    const broken = await description();
    delete broken.info.title;
    assert.equal((await new Validator().validate(broken)).valid, false);
  });

  test("has every operation that is in reach of the network, and their codes", async () => {
    const { paths } = await description();
    const login = paths["/cManager/login"].post;
    assert.match(login.description, /`1` \(409\) The name or the password is wrong/);
    assert.ok(Object.keys(paths).length > 100);
    assert.equal(paths["/cManager/lockItem"], undefined);
  });
});

describe("a program", () => {
  const site = servedDemo();

  test("is given a login, a right and a token, and does with it what that allows", async () => {
    const api = `${site.address}/torvex/api`;
    const call = (...request) => site.call(...request, "--login", "sa").trim();
    const loginId = call("cManager.saveLogin", "advId=21", "loginId=0", "username=menu-robot", "password=unused",
      "name=Menu robot", "job=robot");
    assert.equal(call("desk.setProgram", `loginId=${loginId}`, "isProgram=true", "advId=21"), "");
    const token = call("desk.makeToken", `loginId=${loginId}`, "name=menu", "operations=reads");
    assert.match(token, /^tvx_[\w-]{43}$/);
    const ask = (path, options = {}) =>
      fetch(`${api}/${path}`, { ...options, headers: { Authorization: `Bearer ${token}`, ...options.headers } });
    assert.equal((await (await ask("session")).json()).login.name, "Menu robot");
    assert.equal((await ask("cServer/getPageTitle?pageIdent=1")).status, 200);
    const refused = await ask("cManager/checkOut",
      { method: "POST", headers: { "Content-Type": "application/json" }, body: '{"pageIdent": 1}' });
    assert.equal(refused.status, 403);
    assert.equal(refused.headers.get("content-type"), "application/problem+json");
    assert.equal((await refused.json()).type, "/torvex/api/problems/not-covered");
  });
});
