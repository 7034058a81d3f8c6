import { connection } from "../api/connection";
import { requestNow } from "../api/request";
import { startWords } from "./language";
import { allWebsites, type Login, nothingAllowed, type SessionRights, takeWebsites, workplace } from "./workplace";

interface SessionAnswer {
  login?: (Partial<Login> & { language?: string }) | null;
  interfaceLanguage?: string;
  rights?: SessionRights;
}

const asked = async () => (await requestNow("session", undefined)) as SessionAnswer;

function loginOf({ login }: SessionAnswer): Login | null {
  if (!login?.loginId) return null;
  const { loginId, username = "", name, isAdministrator = false, mustEnrol = false } = login;
  return { loginId, username, name: name || username, isAdministrator, mustEnrol };
}

/** Whom the server takes us for, or null. */
export const whoAmI = async () => loginOf(await asked());

/** Learns who works here, and in which words; false when nobody is logged in. */
export async function startSession(): Promise<boolean> {
  const [session, websites] = await Promise.all([asked(), allWebsites(), startWords()]);
  const login = loginOf(session);
  workplace.patch({ login });
  if (login) takeWebsites(websites, session.rights ?? nothingAllowed);
  return login !== null;
}

/** Learns anew which websites there are, and what this login may do in them. */
export async function renewWebsites(): Promise<void> {
  const [session, websites] = await Promise.all([asked(), allWebsites()]);
  takeWebsites(websites, session.rights ?? nothingAllowed);
}

const firstPause = 2000;
const longestPause = 60_000;

/** While nobody answers, asks again and again, ever more rarely, until somebody does, and then whether he knows us. */
export function watchConnection(): void {
  let timer: ReturnType<typeof setTimeout> | undefined;
  let wasOffline = false;
  let wait = firstPause;
  const again = () => {
    clearTimeout(timer);
    timer = setTimeout(ask, wait);
    wait = Math.min(2 * wait, longestPause);
  };
  async function ask(): Promise<void> {
    try {
      const login = await whoAmI();
      connection.state = login ? "online" : "loggedOut";
    } catch {
      again();
    }
  }
  connection.watch((state) => {
    clearTimeout(timer);
    wait = firstPause;
    if (state === "offline") again();
    // Any answer tells that the line is back; a server that was started anew has forgotten its sessions.
    if (state === "online" && wasOffline) void ask();
    wasOffline = state === "offline";
  });
  window.addEventListener("online", () => connection.state === "offline" && void ask());
  window.addEventListener("offline", () => {
    if (connection.state === "online") connection.state = "offline";
  });
}
