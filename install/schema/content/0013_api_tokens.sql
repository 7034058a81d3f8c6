-- Programs that call the server over the network: logins of their own kind, which nobody can log in with, and the
-- tokens by which they call. Of a token there is only its hash.

alter table TORVEX_LOGINS add column kind {text} default '';

create table TORVEX_API_TOKENS (
  tokenId {identity},
  loginId {number} not null,
  name {text},
  tokenHash {text} not null,
  operations {text},
  addresses {text},
  lastDay {text} default '',
  lastUse {date}
);

create unique index idx_torvex_api_tokens_tokenhash on TORVEX_API_TOKENS (tokenHash);
create index idx_torvex_api_tokens_loginid on TORVEX_API_TOKENS (loginId);
