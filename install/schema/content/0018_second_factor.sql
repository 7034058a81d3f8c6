-- A second factor for logins: the secret that a telephone makes codes from, with the last of its steps whose code was
-- taken, and codes for the day when the telephone is gone, of which there are only hashes. A secret stands here when it
-- was confirmed by a code, not before. Roles can demand that their logins have one.

alter table TORVEX_ROLES add column secondFactor {flag} default 0;

create table TORVEX_SECOND_FACTORS (
  factorId {identity},
  loginId {number} not null,
  secret {text} not null,
  since {date},
  lastStep {number} not null
);

create unique index idx_torvex_second_factors_loginid on TORVEX_SECOND_FACTORS (loginId);

create table TORVEX_RECOVERY_CODES (
  loginId {number} not null,
  codeHash {text} not null
);

create index idx_torvex_recovery_codes_loginid_codehash on TORVEX_RECOVERY_CODES (loginId, codeHash);
