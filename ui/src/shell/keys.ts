import { commands } from "./registry";

/** How a key press is written: "Ctrl+Shift+H". */
export function keyOf(event: KeyboardEvent): string {
  const modifiers = [
    event.ctrlKey || event.metaKey ? "Ctrl" : "",
    event.altKey ? "Alt" : "",
    event.shiftKey && event.key.length > 1 ? "Shift" : "",
  ];
  const key = event.key.length === 1 ? event.key.toUpperCase() : event.key;
  if (event.shiftKey && event.key.length === 1 && (event.ctrlKey || event.altKey)) modifiers.push("Shift");
  return [...modifiers.filter(Boolean), key].join("+");
}

const writesText = (target: EventTarget | null) =>
  target instanceof HTMLElement && (target.isContentEditable || /^(INPUT|TEXTAREA|SELECT)$/.test(target.tagName));

/** Runs the command of a key press. Events of frames come here too. */
export function runKey(event: KeyboardEvent): boolean {
  const key = keyOf(event);
  if (event.defaultPrevented) return false;
  if (key.length === 1 && (writesText(event.target) || document.querySelector("dialog[open]"))) return false;
  const command = commands.value.find((one) => one.key === key && (one.when?.() ?? true));
  if (!command) return false;
  event.preventDefault();
  void command.run();
  return true;
}

export const startKeys = () => document.addEventListener("keydown", runKey);
