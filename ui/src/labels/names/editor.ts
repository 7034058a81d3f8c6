/** Words of the editor: 4200 to 4499. */
export const editor = {} as const;
