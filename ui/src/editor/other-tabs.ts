// One author, one page, several tabs: a body is typed into in one of them at a time.
import { hearTabs, type TabMessage, tellTabs } from "../shell/tabs";
import { pagesChanged } from "../shell/workplace";

/** So long is waited for a tab that has a body: it may have been ended by force. */
const answersWithin = 1500;

interface Host {
  readonly pageId: number;
  readonly nodeId: string;
  readonly openBody: number | undefined;
  /** Another tab goes on with the body that is open here. */
  yieldBody(): Promise<void>;
  /** Which bodies are open elsewhere, or what is kept of them, is another. */
  othersChanged(): void;
}

export class OtherTabs {
  private readonly bodies = new Set<number>();
  private handed: ((bodyId: number) => void) | undefined;
  private forget: (() => void) | undefined;

  constructor(private readonly host: Host) {}

  start(): void {
    this.forget = hearTabs((message) => {
      if (message.pageId === this.host.pageId) void this.heard(message);
    });
  }

  stop(): void {
    this.forget?.();
    this.bodies.clear();
  }

  /** The bodies of the page that are open in other tabs. */
  get open(): number[] {
    return [...this.bodies];
  }

  has(bodyId: number): boolean {
    return this.bodies.has(bodyId);
  }

  /** Asks the others what they have open of the page. */
  look(): void {
    this.bodies.clear();
    tellTabs("who", this.host.pageId);
  }

  tell(kind: "opened" | "closed" | "saved", bodyId: number): void {
    tellTabs(kind, this.host.pageId, bodyId);
  }

  /** Lets another tab end with a body; what was typed there stands in the drafts then. */
  async take(bodyId: number): Promise<void> {
    if (!this.bodies.has(bodyId)) return;
    await new Promise<void>((resolve) => {
      const timer = setTimeout(resolve, answersWithin);
      this.handed = (handed) => {
        if (handed !== bodyId) return;
        clearTimeout(timer);
        resolve();
      };
      tellTabs("asks", this.host.pageId, bodyId);
    });
    this.handed = undefined;
    this.bodies.delete(bodyId);
  }

  private async heard({ kind, bodyId }: TabMessage): Promise<void> {
    const { openBody } = this.host;
    if (kind === "who" && openBody !== undefined) this.tell("opened", openBody);
    else if (kind === "asks" && openBody === bodyId) await this.giveUp(bodyId);
    else if (kind === "handed") this.handed?.(bodyId);
    else if (kind === "opened") this.bodies.add(bodyId);
    else if (kind === "closed") this.bodies.delete(bodyId);
    else if (kind === "saved")
      pagesChanged({ pageIds: [this.host.pageId], nodeIds: this.host.nodeId ? [this.host.nodeId] : [] });
    if (kind === "opened" || kind === "closed") this.host.othersChanged();
  }

  private async giveUp(bodyId: number): Promise<void> {
    await this.host.yieldBody();
    this.bodies.add(bodyId);
    tellTabs("handed", this.host.pageId, bodyId);
    this.host.othersChanged();
  }
}
