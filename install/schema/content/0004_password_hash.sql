-- A strong hash of an author's password, beside the mark that then stands in place of its old form.

alter table TORVEX_LOGINS add column passwordHash {text};
