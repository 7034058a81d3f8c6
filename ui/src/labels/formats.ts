/** Making a format takes as long as a hundred uses of it: each is made once. */
function kept<Options extends object, Format>(
  Kind: new (lang: string, options?: Options) => Format,
): (lang: string, options?: Options) => Format {
  const made = new Map<string, Format>();
  return (lang, options) => {
    const key = `${lang} ${options ? JSON.stringify(options) : ""}`;
    const format = made.get(key) ?? new Kind(lang, options);
    made.set(key, format);
    return format;
  };
}

/** How a language writes moments, spans and numbers: `dates("de", { dateStyle: "full" }).format(moment)`. */
export const dates = kept<Intl.DateTimeFormatOptions, Intl.DateTimeFormat>(Intl.DateTimeFormat);
export const spans = kept<Intl.RelativeTimeFormatOptions, Intl.RelativeTimeFormat>(Intl.RelativeTimeFormat);
export const numbers = kept<Intl.NumberFormatOptions, Intl.NumberFormat>(Intl.NumberFormat);
