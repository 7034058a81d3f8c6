-- Before the first step: text that compares ignoring case.
create extension if not exists citext;
