/** Words of passwords, and of the list of keys: 5890 to 5919. */
export const passwords = {
  passwordCommon: 5890,
  keysInTexts: 5891,
  keysFoundInTree: 5892,
  importCommon: 5893,
} as const;
