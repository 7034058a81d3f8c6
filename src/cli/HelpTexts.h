#pragma once

/// What the help says besides the options. Lines are at most 100 characters long.
namespace torvex::cli::help {

inline constexpr const char* program =
    "Torvex serves websites in several languages, and the pages with which authors make them, out of one\n"
    "installation folder.";

inline constexpr const char* programExamples =
    "Examples:\n"
    "  torvex init mysite                         a new installation with a small starter site\n"
    "  torvex serve --install mysite              serve it at http://127.0.0.1:8080/\n"
    "  torvex sql --install mysite 'select pageId, title from TORVEX_PAGES_LIVE'\n"
    "  torvex call --install mysite cServer.getNodeId pageId=1\n"
    "\n"
    "Commands other than init find the installation by --install DIR, else by the variable\n"
    "TORVEX_INSTALL, else in the current folder. \"torvex COMMAND --help\" tells more of each.\n"
    "The exit code is 0 when all went well, 1 when it failed, 2 when the command line was wrong.";

inline constexpr const char* init =
    "Makes an installation in the folder DIR: the settings file torvex.toml, the database, the templates\n"
    "and the public files. It begins with a small starter site, unless --demo or --empty say otherwise.\n"
    "A folder or database that is in use is refused, and nothing is changed then.";

inline constexpr const char* initExamples =
    "Examples:\n"
    "  torvex init mysite\n"
    "  torvex init mysite --site sh --lang de --title 'Stadthaus'\n"
    "  torvex init demo --demo\n"
    "  torvex init mysite --database postgresql://torvex@localhost/mysite\n"
    "\n"
    "The login of the system administrator is \"sa\". Without --admin-password a password is made and\n"
    "shown once, and so are those of the demo's team. Passwords ignore case. They are kept as strong\n"
    "hashes; with --empty or --passwords given in the form that other programs read, of which the first\n"
    "20 characters count.";

inline constexpr const char* serve =
    "Serves the installation until it is asked to end by SIGTERM or Ctrl-C: running requests are finished\n"
    "first. Address, threads and limits stand in torvex.toml. The log goes to standard error.";

inline constexpr const char* serveExamples =
    "Examples:\n"
    "  torvex serve --install mysite\n"
    "  torvex serve --install mysite --listen 0.0.0.0:80\n"
    "  torvex serve --install mysite --listen '[::1]:8080'";

inline constexpr const char* sql =
    "Runs SQL statements on the installation's database, in order and in one transaction: when one fails,\n"
    "nothing is kept. Without STATEMENT they are read from standard input. Statements are divided by \";\".";

inline constexpr const char* sqlExamples =
    "Examples:\n"
    "  torvex sql 'select site, lang, title from TORVEX_SITES_LANGUAGES'\n"
    "  torvex sql --json 'select * from TORVEX_SETUP where loginId = 0' > settings.jsonl\n"
    "  torvex sql < changes.sql";

inline constexpr const char* migrate =
    "Brings the database to the schema of this program. The embedded database is copied first, to a folder\n"
    "beside it; of a PostgreSQL database make a dump before. New words and pages of the authoring interface\n"
    "are added; words that were changed stay. Stop the server while it runs.";

inline constexpr const char* migrateExamples =
    "Examples:\n"
    "  torvex migrate --install mysite\n"
    "  pg_dump mysite > mysite.sql && torvex migrate --install mysite";

inline constexpr const char* call =
    "Calls an operation of a public class and prints its result, beside a server that may run. With --batch\n"
    "it reads requests from standard input, a JSON object a line, and answers each with a line.";

inline constexpr const char* callExamples =
    "Examples:\n"
    "  torvex call cServer.getNodeId pageId=1\n"
    "  torvex call template.getTemplateList site=ws lang=en listType=2 --login sa\n"
    "  torvex call --batch < requests.jsonl > answers.jsonl\n"
    "\n"
    "\"torvex reference\" lists the operations.";

inline constexpr const char* snapshot =
    "Renews the files under search/html/ that the full text catalogue reads: of one page, or with --all of\n"
    "every published page, and removes those of pages that are gone. Publishing does so for each page by\n"
    "itself; this is for files that were lost, or after templates have changed. The server may run.";

inline constexpr const char* snapshotExamples =
    "Examples:\n"
    "  torvex snapshot --install mysite --all\n"
    "  torvex snapshot --install mysite 12\n"
    "  torvex snapshot --install mysite ab.en.01.02";

inline constexpr const char* index =
    "Compares the catalogue of the search with the pages' snapshots and the documents, and takes in what\n"
    "differs; or, with --all, reads every file anew. A server does so by itself when it starts and while it\n"
    "runs. It can be stopped at any time and goes on with the next run. The server may run.\n"
    "With --serve the catalogue is offered to other servers, whose search pages name this one: to everybody\n"
    "who reaches the address, so choose one of a network of your own.";

inline constexpr const char* indexExamples =
    "Examples:\n"
    "  torvex index --install mysite\n"
    "  torvex index --install mysite --check\n"
    "  torvex index --install mysite --serve 127.0.0.1:8489";

inline constexpr const char* importing =
    "Adds and changes the accounts of visitors by a table, a line for each user: all lines or, when one of\n"
    "them can't be taken, none. The first line names the columns, in any order: username and any of\n"
    "password, firstname, lastname, validFrom, validTo, groups. A column that is missing leaves what is\n"
    "there, and so does an empty password. Days are 20261231 or 2026-12-31, groups are names divided by |.\n"
    "Cells are divided by commas, semicolons or tabs. Nobody is removed. The server may run.";

inline constexpr const char* importingExamples =
    "Examples:\n"
    "  torvex import users members.csv --dry-run\n"
    "  torvex import users members.csv --install mysite\n"
    "  torvex import users members.csv --charset windows-1252";

inline constexpr const char* exporting =
    "Prints the accounts of visitors as a table that import takes, in UTF-8: without passwords, unless they\n"
    "are asked for. Those that are kept as hashes can't be told; import leaves them what they are.";

inline constexpr const char* exportingExamples =
    "Examples:\n"
    "  torvex export users > members.csv\n"
    "  torvex export users --passwords --install mysite > members.csv";

inline constexpr const char* reference =
    "Prints what each public class can do: operations, arguments, defaults, results, codes, effects and\n"
    "rights, in Markdown. With --json it is one object that programs can read.";

inline constexpr const char* referenceExamples =
    "Examples:\n"
    "  torvex reference\n"
    "  torvex reference > operations.md\n"
    "  torvex reference --json > operations.json";

}  // namespace torvex::cli::help
