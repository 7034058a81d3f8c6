import { connection } from "./connection";
import { patiently } from "./patience";
import { offlineProblem, Problem, type ProblemFields } from "./problem";
import { type Lane, Queue } from "./queue";

export interface CallOptions {
  signal?: AbortSignal;
  /** Waits behind all that an author waits for. */
  background?: boolean;
  /** Gives up at once when the session is lost, instead of waiting for the login. */
  noLogin?: boolean;
}

const base = "/torvex/api/";
const queue = new Queue();

async function problemOf(response: Response): Promise<Problem> {
  const fields = await response.json().catch(() => ({}));
  return new Problem({ ...(fields as ProblemFields), status: response.status });
}

async function sent(path: string, body: unknown, signal?: AbortSignal): Promise<Response> {
  try {
    return await fetch(base + path, {
      method: body === undefined ? "GET" : "POST",
      credentials: "same-origin",
      headers: {
        Accept: "application/json",
        ...(body === undefined ? {} : { "Content-Type": "application/json", "X-Torvex-Token": connection.token }),
      },
      ...(body === undefined ? {} : { body: JSON.stringify(body) }),
      ...(signal ? { signal } : {}),
    });
  } catch (error) {
    if (signal?.aborted) throw error;
    connection.state = connection.state === "loggedOut" ? "loggedOut" : "offline";
    throw offlineProblem();
  }
}

/** Not logged in any more, or logged in anew in another tab, by which the token of this one is void. */
const isStranger = ({ status, kind }: Problem) => status === 401 || (status === 403 && kind === "foreign");

/** One request: repeated when the server is busy, held while the login is lost. */
async function answered(path: string, body: unknown, { signal, noLogin }: CallOptions): Promise<unknown> {
  for (;;) {
    const { token } = connection;
    const response = await patiently(() => sent(path, body, signal));
    if (connection.state === "offline") connection.state = "online";
    if (response.ok) return response.status === 204 ? null : response.json();
    const problem = await problemOf(response);
    if (noLogin || !isStranger(problem)) throw problem;
    // Another tab has logged in while this was on its way.
    if (connection.token !== token) continue;
    connection.state = "loggedOut";
    await connection.untilOnline(signal);
  }
}

/** Sends a body to an address of the API, or asks it for what it has. */
export const request = (path: string, body: unknown, lane: Lane, options: CallOptions = {}): Promise<unknown> =>
  queue.run(options.background ? "background" : lane, () => answered(path, body, options), options.signal);

/** Past the queue: for logging in, while all others wait for it. */
export const requestNow = (path: string, body: unknown, options: CallOptions = {}) =>
  answered(path, body, { ...options, noLogin: true });

/** The bare response, for who needs its headers. */
export async function post(path: string, body: unknown): Promise<Response> {
  const response = await sent(path, body);
  if (!response.ok) throw await problemOf(response);
  return response;
}
