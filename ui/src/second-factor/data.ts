/** The second factor of one's own login, as it comes from the server and goes there. */

import { call, connection } from "../api";
import { post } from "../api/request";
import { workplace } from "../shell/workplace";

export interface FactorState {
  readonly isOn: number;
  readonly since: string | null;
  readonly codesLeft: number;
  readonly isDemanded: number;
}

export async function stateOf(): Promise<FactorState> {
  const [state] = (await call("desk.getSecondFactor", {})) as FactorState[];
  return state ?? { isOn: 0, since: null, codesLeft: 0, isDemanded: 0 };
}

/** The address that an application reads. */
export const begin = (): Promise<string> => call("desk.beginSecondFactor", {}) as Promise<string>;

/** The secret of an address, in groups as people type it. */
export const secretIn = (address: string): string =>
  (new URL(address).searchParams.get("secret") ?? "").replace(/(.{4})(?=.)/g, "$1 ");

const codesIn = (text: unknown): string[] => String(text).split(" ");

export const confirm = async (code: string): Promise<string[]> =>
  codesIn(await call("desk.confirmSecondFactor", { code }));

export const resetFactor = (loginId: number): Promise<unknown> => call("registers.resetSecondFactor", { loginId });
export const demandFactor = (roleId: number, isDemanded: boolean): Promise<unknown> =>
  call("registers.demandSecondFactor", { roleId, isDemanded });

/** What takes a proof of who one is; the token of this document may be another one then. */
async function proven(operation: string, proof: Record<string, string>): Promise<unknown> {
  const response = await post(operation, { username: workplace.value.login?.username ?? "", ...proof });
  connection.token = response.headers.get("X-Torvex-Token") ?? connection.token;
  return ((await response.json()) as { result: unknown }).result;
}

export const drop = (proof: string): Promise<unknown> => proven("desk/dropSecondFactor", { proof });
export const renewCodes = async (code: string): Promise<string[]> =>
  codesIn(await proven("desk/renewRecoveryCodes", { code }));
