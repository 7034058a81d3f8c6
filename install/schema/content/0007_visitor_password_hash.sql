-- A strong hash of a visitor's password, beside the mark that then stands in its place.

alter table TORVEX_USERS add column passwordHash {text};
