-- Before the first step: text that compares ignoring case.
create extension if not exists citext;

-- Text sorts by character codes whatever the locale of the server, so that a range of codes is a range of an
-- index; unlike in "C", like and lower know letters beyond ASCII.
create collation if not exists torvex (provider = libc, locale = 'C.UTF-8');
