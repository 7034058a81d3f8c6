export type { Answer, Row } from "./answer";
export { Batch, type Expect, type Step, sha256 } from "./batch";
export { type AnswerOf, type CallName, call, type OperationName, type With } from "./call";
export { type ConnectionState, connection } from "./connection";
export { isCancelled, isProblem, Problem, type ProblemFields } from "./problem";
export type { Operations, Properties } from "./register.gen";
export type { CallOptions } from "./request";
