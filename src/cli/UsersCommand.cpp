#include "cli/UsersCommand.h"

#include <algorithm>
#include <fmt/format.h>
#include <fstream>
#include <istream>
#include <iterator>
#include <ostream>

#include "accounts/CommonPasswords.h"
#include "accounts/UserFile.h"
#include "cli/OpenInstallation.h"
#include "cli/Progress.h"
#include "cli/UsageError.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Charset.h"
#include "records/AuditTrail.h"
#include "records/RegisterLock.h"

namespace torvex::cli {

namespace {

std::string allOf(std::istream& stream, const std::string& name) {
    std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    if (stream.bad()) throw Error(name + " can't be read");
    return bytes;
}

std::string bytesOf(const std::string& file, std::istream& in) {
    if (file == "-") return allOf(in, "standard input");
    std::ifstream stream(file, std::ios::binary);
    // A folder opens, and then gives nothing.
    if (!stream || (stream.peek(), stream.bad())) throw Error(file + " can't be read");
    return allOf(stream, file);
}

std::string textOf(const ImportUsersOptions& options, std::istream& in) {
    if (!options.charset.empty() && !charset::isKnown(options.charset)) {
        throw UsageError(fmt::format("--charset: there is no encoding \"{}\"", options.charset));
    }
    const std::string bytes = bytesOf(options.file, in);
    if (!options.charset.empty()) return charset::decode(bytes, options.charset);
    try {
        return charset::decodeFile(bytes);
    } catch (const Error& error) {
        throw Error(fmt::format("{} isn't Unicode ({}); name its encoding with --charset, as windows-1252",
                                options.file, error.what()));
    }
}

struct Counts {
    std::size_t added = 0;
    std::size_t changed = 0;
    std::size_t same = 0;
};

std::string told(const Counts& counts, std::string_view added, std::string_view changed) {
    return fmt::format("{} {}, {} {}, {} as they are", counts.added, added, counts.changed, changed,
                       counts.same);
}

/// What is to happen to one account, counted.
std::string planned(const std::optional<VisitorAccount>& account, const VisitorChange& change,
                    Counts& counts) {
    const auto names = differences(account, change);
    if (!account) {
        ++counts.added;
        return fmt::format("adds \"{}\"", change.username);
    }
    if (names.empty()) {
        ++counts.same;
        return fmt::format("leaves \"{}\" as it is", change.username);
    }
    ++counts.changed;
    return fmt::format("changes \"{}\": {}", change.username, fmt::join(names, ", "));
}

/// Moves the lines of new accounts that lack a password to the bad ones.
void refuseWithoutPassword(db::Connection& connection, UserFile& file) {
    std::erase_if(file.users, [&](const UserFile::User& user) {
        if (user.change.password || findVisitor(connection, user.change.username)) return false;
        file.bad.push_back({user.line, "a new user needs a password"});
        return true;
    });
    std::ranges::sort(file.bad, {}, &BadLine::number);
}

/// Before anything is locked: a hash takes its time.
void leaveOutSamePasswords(db::Connection& connection, UserFile& file) {
    for (UserFile::User& user : file.users) {
        if (!user.change.password) continue;
        if (const auto account = findVisitor(connection, user.change.username))
            leaveOutSamePassword(*account, user.change);
    }
}

ExitCode report(const UserFile& file, const std::string& name, const Terminal& terminal) {
    for (const auto& [number, reason] : file.bad) {
        terminal.err << fmt::format("torvex: {}, line {}: {}\n", name, number, reason);
    }
    return file.bad.empty() ? ExitCode::Ok : ExitCode::Failed;
}

/// They are written all the same: the owner may know what they guard.
void warnOfCommonPasswords(const UserFile& file, const std::string& name, const Terminal& terminal) {
    for (const auto& [line, change] : file.users) {
        if (!change.password || !isCommonPassword(*change.password)) continue;
        terminal.err << fmt::format("torvex: {}, line {}: the password is one of the 100,000 commonest\n",
                                    name, line);
    }
}

void showPlan(db::Connection& connection, const UserFile& file, const Terminal& terminal) {
    Counts counts;
    for (const auto& [line, change] : file.users) {
        const auto account = findVisitor(connection, change.username);
        terminal.out << fmt::format("line {}: {}\n", line, planned(account, change, counts));
    }
    terminal.out << "Would be: " << told(counts, "added", "changed") << ". Nothing was changed\n";
}

Counts writeAll(HostContext& host, const UserFile& file, const Terminal& terminal) {
    Progress progress(terminal, file.users.size(), "users");
    const auto outcome = db::inOwnTransaction(host, [&](db::Connection& own) {
        // Of two imports at once, the second finds the users of the first.
        lockRegisters(own);
        Counts counts;
        for (const auto& [line, change] : file.users) {
            const auto account = findVisitor(own, change.username);
            if (!account && !change.password) throw Error(fmt::format("the user of line {} is gone", line));
            const std::size_t same = counts.same;
            planned(account, change, counts);
            if (counts.same == same) saveVisitor(own, account, change);
            progress.step();
        }
        return db::commit(counts);
    });
    progress.clear();
    return outcome.value;
}

/// One line for all: the trail is about who did what, and an import is one deed.
void recordImport(HostContext& host, const Counts& counts) {
    const std::string description = "Intranet/extranet users imported: " + told(counts, "added", "changed");
    followUp(host.log, "import users", [&] {
        AuditLine line;
        line.action = "import";
        line.description = description;
        writeAuditLine(host, line);
    });
}

ExitCode importInto(HostContext& host, db::Connection& connection, const ImportUsersOptions& options,
                    const Terminal& terminal) {
    UserFile file = readUserFile(textOf(options, terminal.in), GroupNames(connection));
    refuseWithoutPassword(connection, file);
    leaveOutSamePasswords(connection, file);
    warnOfCommonPasswords(file, options.file, terminal);
    if (options.dryRun) {
        showPlan(connection, file, terminal);
        return report(file, options.file, terminal);
    }
    if (report(file, options.file, terminal) != ExitCode::Ok) throw Error("nothing was changed");
    const Counts counts = writeAll(host, file, terminal);
    recordImport(host, counts);
    terminal.out << "Users: " << told(counts, "added", "changed") << '\n';
    return ExitCode::Ok;
}

}  // namespace

ExitCode importUsers(const ImportUsersOptions& options, const Environment& environment,
                     const Terminal& terminal) {
    OpenInstallation opened(Installation::open(options.install, environment));
    ExitCode code = ExitCode::Ok;
    opened.runWithoutVisitor([&](HostContext& host) {
        const auto connection = opened.installation.openCurrentDatabase(*opened.database);
        code = importInto(host, *connection, options, terminal);
    });
    return code;
}

ExitCode exportUsers(const ExportUsersOptions& options, const Environment& environment,
                     const Terminal& terminal) {
    OpenInstallation opened(Installation::open(options.install, environment));
    const auto connection = opened.installation.openCurrentDatabase(*opened.database);
    const db::ReadScope oneState(*connection);
    const GroupNames groups(*connection);
    Progress progress(terminal, countVisitors(*connection), "users");
    std::size_t hashed = 0;
    terminal.out << userFileHead(options.passwords);
    visitVisitors(*connection, [&](const VisitorAccount& account) {
        terminal.out << userFileLine(account, groups, options.passwords);
        if (!account.passwordHash.empty()) ++hashed;
        progress.step();
    });
    progress.clear();
    if (options.passwords && hashed > 0) {
        terminal.err << fmt::format(
            "torvex: {} passwords are kept as hashes and can't be told; their cells are empty\n", hashed);
    }
    return ExitCode::Ok;
}

}  // namespace torvex::cli
