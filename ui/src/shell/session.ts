import { Batch } from "../api";
import { connection } from "../api/connection";
import { isProblem } from "../api/problem";
import { requestNow } from "../api/request";
import { loadWords } from "../labels";
import type { Login } from "./workplace";
import { workplace } from "./workplace";

interface SessionAnswer {
  login?: (Partial<Login> & { language?: string }) | null;
  interfaceLanguage?: string;
}

const isAdministrator = (username: string) => username.toLowerCase() === "sa";

async function askedOfObject(): Promise<SessionAnswer> {
  const work = new Batch();
  const me = work.get("cManager", "loginId", "username", "Fullname");
  await work.run({ noLogin: true });
  const { loginId, username, Fullname } = me.value;
  return { login: loginId ? { loginId, username, name: Fullname } : null };
}

async function asked(): Promise<SessionAnswer> {
  try {
    return (await requestNow("session", undefined)) as SessionAnswer;
  } catch (error) {
    if (isProblem(error) && error.status === 404) return askedOfObject();
    throw error;
  }
}

/** Whom the server takes us for, or null. */
export async function whoAmI(): Promise<Login | null> {
  const { login } = await asked();
  if (!login?.loginId) return null;
  const username = login.username ?? "";
  return {
    loginId: login.loginId,
    username,
    name: login.name || username,
    isAdministrator: login.isAdministrator ?? isAdministrator(username),
  };
}

/** Learns who works here, and in which words; false when nobody is logged in. */
export async function startSession(): Promise<boolean> {
  const [login] = await Promise.all([whoAmI(), loadWords(document.documentElement.lang || "en")]);
  workplace.patch({ login });
  return login !== null;
}

const pulseWhenOffline = 3000;

/** While nobody answers, asks again and again until somebody does, and then whether he knows us. */
export function watchConnection(): void {
  let timer: ReturnType<typeof setTimeout> | undefined;
  let wasOffline = false;
  const again = () => {
    clearTimeout(timer);
    timer = setTimeout(ask, pulseWhenOffline);
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
    if (state === "offline") again();
    else clearTimeout(timer);
    // Any answer tells that the line is back; a server that was started anew has forgotten its sessions.
    if (state === "online" && wasOffline) void ask();
    wasOffline = state === "offline";
  });
  window.addEventListener("online", () => connection.state === "offline" && void ask());
  window.addEventListener("offline", () => {
    if (connection.state === "online") connection.state = "offline";
  });
}
