/** Enter in a dialog's field does what the dialog is there for. */
export function pressPrimary(event: KeyboardEvent): void {
  if (event.key !== "Enter") return;
  (event.target as HTMLElement).closest("dialog")?.querySelector<HTMLElement>(".primary")?.click();
}
