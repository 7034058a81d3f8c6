/** Asking a server that is busy. */

const tries = 4;
const longestPause = 10_000;

const isBusy = ({ status }: Response): boolean => status === 429 || status === 503;

function waitOf({ headers }: Response, tried: number): number {
  const asked = Number(headers.get("Retry-After"));
  return Number.isFinite(asked) && asked > 0 ? asked * 1000 : 250 * 2 ** tried;
}

/** The answer, asked for again some times while the server says that it is busy; the last one when it stays so. */
export async function patiently(ask: () => Promise<Response>): Promise<Response> {
  for (let tried = 0; ; ++tried) {
    const response = await ask();
    if (!isBusy(response) || tried >= tries) return response;
    const wait = waitOf(response, tried);
    if (wait > longestPause) return response;
    await new Promise((resolve) => setTimeout(resolve, wait));
  }
}
