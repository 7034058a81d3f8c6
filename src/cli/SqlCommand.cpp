#include "cli/SqlCommand.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <istream>
#include <iterator>
#include <ostream>
#include <sstream>

#include "cli/ColumnNames.h"
#include "cli/RowPrinter.h"
#include "cli/SqlScript.h"
#include "cli/UsageError.h"
#include "installation/Installation.h"

namespace torvex::cli {

namespace {

/// They would end the one transaction that all statements share.
constexpr std::array<std::string_view, 9> transactionWords = {
    "begin", "commit", "end", "rollback", "start", "abort", "savepoint", "release", "prepare"};

std::string readAll(std::istream& in) {
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void refuseTransactionWords(const std::vector<std::string>& statements) {
    for (std::size_t i = 0; i < statements.size(); ++i) {
        const std::string word = firstWord(statements[i]);
        if (std::find(transactionWords.begin(), transactionWords.end(), word) == transactionWords.end())
            continue;
        throw Error(fmt::format("statement {}: leave \"{}\" out; all statements run in one transaction",
                                i + 1, word));
    }
}

void runStatement(db::Connection& connection, const std::string& statement, const ColumnNames& spelling,
                  RowPrinter& printer) {
    auto rows = connection.query(statement);
    if (rows.columns() == 0) {
        rows.next();
        return;
    }
    std::vector<std::string> names;
    for (std::size_t i = 0; i < rows.columns(); ++i)
        names.push_back(spelling.spelled(rows.columnName(i), statement));
    printer.print(names, rows);
}

void runAll(db::Connection& connection, const std::vector<std::string>& statements, RowPrinter& printer) {
    const ColumnNames spelling;
    db::Transaction transaction(connection);
    for (std::size_t i = 0; i < statements.size(); ++i) {
        try {
            runStatement(connection, statements[i], spelling, printer);
        } catch (const db::DatabaseError& error) {
            throw Error(fmt::format("statement {}: {}\nNothing was changed.", i + 1, error.what()));
        }
    }
    transaction.commit();
}

}  // namespace

ExitCode sql(const SqlOptions& options, const Environment& environment, const Terminal& terminal) {
    const auto installation = Installation::open(options.install, environment);
    const auto statements = splitStatements(options.statements ? *options.statements : readAll(terminal.in));
    if (statements.empty()) throw UsageError("there is no statement to run");
    refuseTransactionWords(statements);

    const auto database = db::makeDatabase();
    const auto connection = installation.openDatabase(*database);
    // Shown only when all went well: rows of a transaction that is taken back would mislead.
    std::ostringstream shown;
    const auto printer = options.json ? jsonPrinter(shown) : tablePrinter(shown);
    runAll(*connection, statements, *printer);
    terminal.out << shown.str();
    return ExitCode::Ok;
}

}  // namespace torvex::cli
