/** Passwords that are being given to somebody: the server knows which are the commonest. */

import { Batch, call, Problem } from "../api";
import { L, t } from "../labels";

/** So that not every letter is asked for. */
const asksAfter = 300;

const judge = async (password: string): Promise<boolean> => (await call("desk.judgePassword", { password })) === 1;

/** Refuses a password that would be guessed at once; an empty one is none. */
export async function refuseCommon(password: string): Promise<void> {
  if (password !== "" && (await judge(password)))
    throw new Problem({ status: 409, kind: "password-common", detail: t(L.passwordCommon) });
}

/** Those of the passwords that would be guessed at once. */
export async function commonOf(passwords: readonly string[]): Promise<string[]> {
  const work = new Batch();
  const steps = passwords.map((password) => work.do("desk.judgePassword", { password }));
  await work.run();
  return passwords.filter((_, at) => steps[at]?.value === 1);
}

/** Says of a password that is being typed whether it is one of the commonest. */
export class Judgement {
  private password = "";
  private isCommon = false;
  private timer: ReturnType<typeof setTimeout> | undefined;

  constructor(
    private readonly told: () => unknown,
    private readonly ask: (password: string) => Promise<boolean> = judge,
    private readonly wait = asksAfter,
  ) {}

  /** The sentence for its field; "" as long as nothing is wrong with it. */
  get wrong(): string {
    return this.isCommon ? t(L.passwordCommon) : "";
  }

  typed(password: string): void {
    this.password = password;
    this.isCommon = false;
    clearTimeout(this.timer);
    if (password) this.timer = setTimeout(() => void this.find(password), this.wait);
  }

  private async find(password: string): Promise<void> {
    // Who can't be asked now is asked again before it is saved.
    const isCommon = await this.ask(password).catch(() => false);
    if (password !== this.password) return;
    this.isCommon = isCommon;
    this.told();
  }
}
