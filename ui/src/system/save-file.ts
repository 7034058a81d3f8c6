/** Gives a text to its reader as a file. */
export function saveFile(name: string, text: string, type = "text/csv;charset=utf-8"): void {
  const address = URL.createObjectURL(new Blob([text], { type }));
  const link = document.createElement("a");
  link.href = address;
  link.download = name;
  link.click();
  setTimeout(() => URL.revokeObjectURL(address), 10_000);
}
