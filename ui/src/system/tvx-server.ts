/** A server: its name, and what it has missed. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, state } from "lit/decorators.js";
import { call } from "../api";
import { icon } from "../kit/icon";
import { ask } from "../kit/tvx-dialog";
import { toast } from "../kit/tvx-toast";
import { L, t } from "../labels";
import { failed } from "../pages/actions";
import { momentText } from "../pages/words";
import { textField } from "../records/fields";
import { changedParts, withOwn } from "../records/model/own-parts";
import { RecordElement, type RecordWords } from "../records/record";
import { type Missed, type ServerLine, saveServer, serversOf } from "./data";
import "../rights/rights.css";
import "./system.css";

const PARTS = ["serverName", "serverDescription", "serverIP"] as const;
type Part = (typeof PARTS)[number];

interface ServerRecord {
  readonly server: ServerLine;
  readonly missed: readonly Missed[];
  readonly expected: unknown;
}

const none: ServerLine = { serverId: 0, serverName: "", serverDescription: "", serverIP: "" };

@customElement("tvx-server")
export class TvxServer extends RecordElement<ServerRecord> {
  @state() private mine: ServerLine = none;
  protected readonly item = "server";
  protected readonly address = "/torvex/servers.asp";
  protected readonly words: RecordWords = { icon: "server", isGone: L.recordIsGone, isOthers: L.recordChanged };

  protected async read(serverId: number): Promise<ServerRecord> {
    const { servers, missed, expected } = await serversOf();
    const found = servers.find((one) => one.serverId === serverId) ?? none;
    const server = { ...found, serverDescription: found.serverDescription ?? "", serverIP: found.serverIP ?? "" };
    const name = server.serverName.trim().toLowerCase();
    return { server, missed: missed.filter((one) => one.server.trim().toLowerCase() === name), expected };
  }

  protected take({ server }: ServerRecord, keepMine: boolean): void {
    const { record: was, mine } = this;
    this.mine = keepMine && was ? withOwn(PARTS, server, mine, was.server) : server;
  }

  protected get differs(): boolean {
    const { record: was, mine } = this;
    return was !== undefined && changedParts(PARTS, mine, was.server).length > 0;
  }

  protected async store({ expected }: ServerRecord): Promise<string> {
    await saveServer(expected, this.mine);
    return t(L.recordSaved, { name: this.mine.serverName });
  }

  protected heading({ server }: ServerRecord): string {
    return server.serverName;
  }

  private removeIt({ serverId, serverName: name }: ServerLine): Promise<void> {
    const remove = (): Promise<unknown> => call("cManager.deleteServer", { serverId });
    const said = t(L.recordRemoved, { name });
    return this.askToRemove(t(L.removeRecordOf, { name }), t(L.removeServerAsk), remove, said);
  }

  private async catchUp({ serverId, serverName: name }: ServerLine): Promise<void> {
    if (!(await ask(t(L.broughtUp), t(L.broughtUpAsk, { name }), t(L.broughtUp)))) return;
    try {
      await call("registers.forgetMissed", { serverId });
      toast(t(L.upToDate, { name }));
    } catch (error) {
      failed(error);
    }
    await this.renew((id) => this.read(id));
  }

  protected buttons({ server }: ServerRecord): TemplateResult {
    return html`<button class="button" @click=${() => this.removeIt(server)}>${icon("trash-2")}${t(L.delete)}</button>`;
  }

  protected sheet({ server, missed }: ServerRecord): TemplateResult {
    const field = (part: Part, label: string, longest: number): TemplateResult =>
      textField({
        id: `server-${part}`,
        label,
        value: this.mine[part],
        longest,
        fixed: this.isFixed,
        change: (text) => {
          this.mine = { ...this.mine, [part]: text };
        },
      });
    return html`<div class="login-form">${field("serverName", t(L.serverName), 50)}${field("serverDescription", t(L.description), 500)}${field("serverIP", t(L.serverAddress), 50)}</div>
      <div class="inline"><h2>${t(L.missedWhat)}</h2>${missed.length && !this.isFixed ? html`<button type="button" class="button small" @click=${() => this.catchUp(server)}>${icon("check")}${t(L.broughtUp)}</button>` : nothing}</div>
      ${
        missed.length === 0
          ? html`<p class="soft">${t(L.missedNothing)}</p>`
          : html`<ul class="missed" role="list">${missed.map(
              ({ path, task, reason, moment }) =>
                html`<li><code>${path}</code> <span class="rights-mark">${task === "remove" ? t(L.taskRemove) : t(L.taskWrite)}</span> <span class="note">${momentText(moment)}</span><p class="note">${reason}</p></li>`,
            )}</ul>`
      }`;
  }
}
