import { rowsOf } from "./answer";
import { type AnswerOf, type CallName, laneOf, type With } from "./call";
import { isProblem, Problem, type ProblemFields } from "./problem";
import type { Properties } from "./register.gen";
import { type CallOptions, request } from "./request";

export type Expect = { is: unknown } | { sha256: string };

interface StepOptions {
  /** The batch stops unless the call gives this. */
  expect?: Expect;
  /** A refusal doesn't stop the batch. */
  goOn?: boolean;
}

/** What the server takes at once. */
const MOST = 100;

type ClassName = keyof Properties;
type Got<Of extends ClassName, Names extends readonly (keyof Properties[Of])[]> = Pick<Properties[Of], Names[number]>;

/** What one call of a batch gave, once the batch has run. */
export class Step<T> {
  private given?: T;
  /** As it came: what `expect` asks for to find it again. */
  raw: unknown;
  problem?: Problem;
  done = false;

  get value(): T {
    if (!this.done) throw this.problem ?? new Error("this call has not run");
    return this.given as T;
  }

  take(result: unknown): void {
    this.raw = result;
    this.given = rowsOf(result) as T;
    this.done = true;
  }
}

/**
 * Calls that go to the server together and run there one after another, with one object of each class:
 *
 *     const work = new Batch();
 *     work.do("cManager.getPage", { pageIdent: "12" });
 *     const page = work.get("cManager", "pgTitle", "pgType");
 *     await work.run();
 *     page.value.pgTitle
 */
export class Batch {
  private readonly calls: Record<string, unknown>[] = [];
  private readonly steps: Step<unknown>[] = [];
  private writes = false;

  do<Name extends CallName>(name: Name, args: With<Name>, options: StepOptions = {}): Step<AnswerOf<Name>> {
    const [on, operation] = name.split(".");
    this.writes ||= laneOf(name) === "write";
    return this.add({ on, do: operation, with: args, ...options });
  }

  get<Of extends ClassName, Names extends (keyof Properties[Of] & string)[]>(
    on: Of,
    ...names: Names
  ): Step<Got<Of, Names>> {
    return this.add({ on, get: names });
  }

  /** Goes on only where the properties are still so. */
  expect<Of extends ClassName>(on: Of, properties: Partial<Properties[Of]>): void {
    this.add({ on, get: Object.keys(properties), expect: { is: properties } });
  }

  /** Every property of an object that can be read. */
  getAll<Of extends ClassName>(on: Of, options: StepOptions = {}): Step<Properties[Of]> {
    return this.add({ on, get: "*", ...options });
  }

  set<Of extends ClassName, Name extends keyof Properties[Of] & string>(
    on: Of,
    name: Name,
    to: Properties[Of][Name],
  ): Step<null> {
    return this.add({ on, set: name, to });
  }

  get length(): number {
    return this.calls.length;
  }

  /** More calls than one request takes go as several, each with objects of its own. */
  async run(options: CallOptions = {}): Promise<void> {
    for (let at = 0; at < this.calls.length; at += MOST) await this.runFrom(at, options);
  }

  private async runFrom(at: number, options: CallOptions): Promise<void> {
    const calls = this.calls.slice(at, at + MOST);
    try {
      const answer = await request("batch", { calls }, this.writes ? "write" : "read", options);
      this.take(at, (answer as { results: { result?: unknown; problem?: ProblemFields }[] }).results);
    } catch (error) {
      if (isProblem(error)) this.take(at, error.fields.results ?? []);
      throw error;
    }
  }

  private add<T>(call: Record<string, unknown>): Step<T> {
    const step = new Step<T>();
    this.calls.push(call);
    this.steps.push(step as Step<unknown>);
    return step;
  }

  private take(at: number, results: { result?: unknown; problem?: ProblemFields }[]): void {
    results.forEach((entry, place) => {
      const step = this.steps[at + place];
      if (!step) return;
      if (entry.problem) step.problem = new Problem(entry.problem);
      else step.take(entry.result);
    });
  }
}

/** The state of a text as `expect` names it. */
export async function sha256(text: string): Promise<string> {
  const digest = await crypto.subtle.digest("SHA-256", new TextEncoder().encode(text));
  return [...new Uint8Array(digest)].map((byte) => byte.toString(16).padStart(2, "0")).join("");
}
