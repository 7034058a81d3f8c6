/** Words of pages and media: 4500 to 4899. */
export const pages = {} as const;
