-- A second factor for visitors' accounts, as 0018 has it for logins: the secret that a telephone makes codes from, with
-- the last of its steps whose code was taken, and codes for the day when the telephone is gone, of which there are only
-- hashes. A secret stands here when it was confirmed by a code, not before.

create table TORVEX_USER_FACTORS (
  factorId {identity},
  userId {number} not null,
  secret {text} not null,
  since {date},
  lastStep {number} not null
);

create unique index idx_torvex_user_factors_userid on TORVEX_USER_FACTORS (userId);

create table TORVEX_USER_RECOVERY_CODES (
  userId {number} not null,
  codeHash {text} not null
);

create index idx_torvex_user_recovery_codes_userid_codehash on TORVEX_USER_RECOVERY_CODES (userId, codeHash);
