import { rowsOf } from "./answer";
import { type Operations, reads } from "./register.gen";
import { type CallOptions, request } from "./request";

export type OperationName = keyof Operations;
export type With<Name> = Name extends OperationName ? Operations[Name]["with"] : Record<string, unknown>;
// biome-ignore lint/suspicious/noExplicitAny: who calls what the register doesn't describe says what she expects.
export type AnswerOf<Name> = Name extends OperationName ? Operations[Name]["answer"] : any;

/** Those of the register are typed by it; those of a newer server are taken as they are. */
export type CallName = OperationName | (`${"desk" | "registers"}.${string}` & NonNullable<unknown>);

export const laneOf = (name: string) =>
  reads.has(name) || /\.(get|is|find|compare)[A-Z]?/.test(name) ? "read" : "write";

/** Runs an operation: `await call("cManager.checkOut", { pageIdent: "12" })`. A grid comes as its rows. */
export async function call<Name extends CallName>(
  name: Name,
  args: With<Name>,
  options?: CallOptions,
): Promise<AnswerOf<Name>> {
  const answer = (await request(name.replace(".", "/"), args, laneOf(name), options)) as { result: unknown };
  return rowsOf(answer.result) as AnswerOf<Name>;
}
