/** The servers that share one database, and what each has missed of the files. */

import { html, nothing, type TemplateResult } from "lit";
import { customElement, state } from "lit/decorators.js";
import { call } from "../api";
import { icon } from "../kit/icon";
import type { TableColumn } from "../kit/tvx-table";
import { L, plural, t } from "../labels";
import { addDialog } from "../records/add-dialog";
import { textField } from "../records/fields";
import { type ListWords, RecordList } from "../records/record-list";
import { addServer, type Missed, type ServerLine, serversOf } from "./data";
import "./tvx-server";
import "../rights/rights.css";
import "./system.css";

interface Line extends ServerLine {
  readonly isOwn: boolean;
  readonly missed: readonly Missed[];
}

const isSame = (a: string, b: string): boolean => a.trim().toLowerCase() === b.trim().toLowerCase();

@customElement("tvx-servers")
export class TvxServers extends RecordList<Line> {
  protected readonly address = "/torvex/servers.asp";
  protected readonly key = "server";
  protected readonly entry = 62;
  protected readonly words: ListWords = { icon: "server", title: L.servers, add: L.newServer, isEmpty: L.serversEmpty };
  @state() private tested = new Map<number, string>();

  protected async read(): Promise<Line[]> {
    const { servers, missed, own } = await serversOf();
    return servers.map((server) => ({
      ...server,
      serverDescription: server.serverDescription ?? "",
      serverIP: server.serverIP ?? "",
      isOwn: isSame(server.serverName, own),
      missed: missed.filter((one) => isSame(one.server, server.serverName)),
    }));
  }

  protected add(): Promise<string> {
    let server: ServerLine = { serverId: 0, serverName: "", serverDescription: "", serverIP: "" };
    const field = (
      id: "serverName" | "serverDescription" | "serverIP",
      label: string,
      longest: number,
    ): TemplateResult =>
      textField({
        id: `new-${id}`,
        label,
        value: server[id],
        longest,
        change: (text) => (server = { ...server, [id]: text }),
      });
    return addDialog(
      t(L.newServer),
      () =>
        html`${field("serverName", t(L.serverName), 50)}${field("serverDescription", t(L.description), 500)}${field("serverIP", t(L.serverAddress), 50)}`,
      () => addServer(server),
    );
  }

  protected one(serverId: number): TemplateResult {
    return html`<tvx-server .recordId=${serverId} @tvx-done=${this.load}></tvx-server>`;
  }

  protected idOf({ serverId }: Line): number {
    return serverId;
  }

  protected nameOf({ serverName }: Line): string {
    return serverName;
  }

  protected textsOf({ serverName, serverDescription, serverIP }: Line): string[] {
    return [serverName, serverDescription, serverIP];
  }

  private async test({ serverId }: Line): Promise<void> {
    const began = performance.now();
    let said = "";
    try {
      const isThere = await call("cManager.testServer", { serverId });
      said = isThere ? t(L.testWell, { time: Math.round(performance.now() - began) }) : t(L.testBadly);
    } catch (error) {
      said = error instanceof Error ? error.message : t(L.testBadly);
    }
    this.tested = new Map([...this.tested, [serverId, said]]);
  }

  protected get columns(): TableColumn<Line>[] {
    return [
      {
        id: "name",
        label: t(L.serverName),
        cell: (row) =>
          html`${this.link(row, row.serverName)} ${row.isOwn ? html`<span class="rights-mark done">${t(L.thisServer)}</span>` : nothing}`,
        by: (row) => row.serverName,
      },
      {
        id: "text",
        label: t(L.description),
        cell: (row) => row.serverDescription,
        by: (row) => row.serverDescription,
        wide: true,
      },
      { id: "ip", label: t(L.serverAddress), cell: (row) => row.serverIP, by: (row) => row.serverIP, wide: true },
      {
        id: "missed",
        label: t(L.missedWhat),
        cell: (row) =>
          row.missed.length
            ? html`<span class="rights-mark warn">${plural(row.missed.length, L.missedOne, L.missedMany)}</span>`
            : html`<span class="soft">${t(L.missedNothing)}</span>`,
        by: (row) => row.missed.length,
        width: "168px",
      },
      {
        id: "test",
        label: t(L.testIt),
        cell: (row) =>
          row.isOwn
            ? nothing
            : html`<button type="button" class="button small" aria-label="${t(L.testIt)}: ${row.serverName}" @click=${() => this.test(row)}>${icon("refresh-cw")}${t(L.testIt)}</button> <span role="status">${this.tested.get(row.serverId) ?? ""}</span>`,
        wide: true,
        width: "260px",
      },
    ];
  }
}
