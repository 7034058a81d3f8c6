import type { Operations } from "./register.gen";

export interface ProblemFields {
  type?: string;
  title?: string;
  status: number;
  detail?: string;
  operation?: string;
  code?: string | number;
  holder?: string;
  argument?: string;
  reference?: string;
  /** Of a batch: the call that stopped it, from 0, and what those before it gave. */
  call?: number;
  results?: { result?: unknown }[];
  [more: string]: unknown;
}

type Refusal<Name extends keyof Operations> = Operations[Name]["refusals"];

/** What kept a call from doing what it was to do. */
export class Problem extends Error {
  readonly status: number;
  readonly code: string;
  readonly operation: string;
  readonly reference: string;
  readonly holder: string;

  constructor(readonly fields: ProblemFields) {
    super(fields.detail || fields.title || `${fields.status}`);
    this.name = "Problem";
    this.status = fields.status;
    this.code = fields.code === undefined ? "" : String(fields.code);
    this.operation = fields.operation ?? "";
    this.reference = fields.reference ?? "";
    this.holder = fields.holder ?? "";
  }

  /** The last part of its type: "locked-by-other". */
  get kind(): string {
    return (this.fields.type ?? "").split("/").at(-1) ?? "";
  }

  /** Nobody answers: the line, or the server, is gone. */
  get offline(): boolean {
    return this.status === 0;
  }

  /** The state that a call expected is another by now. */
  get changed(): boolean {
    return this.status === 412;
  }

  /** Whether an operation refused by one of its codes. */
  is<Name extends keyof Operations>(operation: Name, ...codes: Refusal<Name>[]): boolean {
    const same = this.operation.toLowerCase() === operation.toLowerCase();
    return this.status === 409 && same && (codes.length === 0 || (codes as string[]).includes(this.code));
  }
}

export const offlineProblem = () => new Problem({ status: 0, type: "offline", title: "offline" });

export const isProblem = (error: unknown): error is Problem => error instanceof Problem;

/** Whether a call ended because its caller no longer wanted it. */
export const isCancelled = (error: unknown) => error instanceof DOMException && error.name === "AbortError";
