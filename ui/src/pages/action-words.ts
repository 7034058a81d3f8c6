/** What the audit trail says was done, in words. */

import type { IconName } from "../kit/icon";
import { L, type Label } from "../labels";
import { word } from "./words";

interface ActionWord {
  readonly label: Label;
  readonly icon: IconName;
}

const ACTIONS: Readonly<Record<string, ActionWord>> = {
  new: { label: L.didNew, icon: "file-plus" },
  save: { label: L.didSave, icon: "save" },
  "check out": { label: L.didCheckOut, icon: "lock" },
  "check in": { label: L.didCheckIn, icon: "check" },
  "check in - approve": { label: L.didCheckInApprove, icon: "clipboard-check" },
  approve: { label: L.didApprove, icon: "clipboard-check" },
  unapprove: { label: L.didUnapprove, icon: "undo-2" },
  delete: { label: L.didMark, icon: "trash-2" },
  undelete: { label: L.didUnmark, icon: "undo-2" },
  publish: { label: L.didPublish, icon: "send" },
  "publish (delete)": { label: L.didRemove, icon: "trash-2" },
  reset: { label: L.didReset, icon: "rotate-ccw" },
  unlock: { label: L.didUnlock, icon: "lock" },
  online: { label: L.didOnline, icon: "power" },
  offline: { label: L.didOffline, icon: "power-off" },
  "online+": { label: L.didOnline, icon: "power" },
  "offline+": { label: L.didOffline, icon: "power-off" },
  copy: { label: L.didCopy, icon: "copy" },
  "copy+": { label: L.didCopy, icon: "copy" },
  paste: { label: L.didPaste, icon: "copy" },
  "paste+": { label: L.didPaste, icon: "copy" },
  move: { label: L.didMove, icon: "move" },
  "move up": { label: L.didMoveUp, icon: "arrow-up" },
  "move down": { label: L.didMoveDown, icon: "arrow-down" },
  "save body": { label: L.didSaveBody, icon: "pencil" },
  edit: { label: L.didEdit, icon: "pencil" },
  enable: { label: L.didOnline, icon: "power" },
  disable: { label: L.didOffline, icon: "power-off" },
  import: { label: L.didImport, icon: "upload" },
  login: { label: L.didLogin, icon: "user" },
  logout: { label: L.didLogout, icon: "log-out" },
  "forced logout": { label: L.didForced, icon: "log-out" },
  "access denied": { label: L.didDenied, icon: "hand" },
};

const actionOf = (action: string): ActionWord | undefined => ACTIONS[action.toLowerCase()];

/** "checked in"; an action that isn't known stands as it is. */
export function actionWord(action: string): string {
  const known = actionOf(action);
  return known ? word(known.label) : action;
}

export const actionIcon = (action: string): IconName => actionOf(action)?.icon ?? "activity";
