// registers: accounts of visitors out of a table.

#include <algorithm>
#include <fmt/format.h>
#include <set>

#include "accounts/Actor.h"
#include "accounts/UserFile.h"
#include "accounts/VisitorAccounts.h"
#include "desk/registers.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/db/OwnTransaction.h"
#include "records/RegisterLock.h"

namespace torvex {

namespace {

constexpr std::size_t importColumns = 4;

/// What a line of the table is for its account.
struct Step {
    std::size_t line = 0;
    std::string username;
    std::string_view outcome;
    std::string detail;
};

namespace outcome {
constexpr std::string_view adds = "adds";
constexpr std::string_view changes = "changes";
constexpr std::string_view same = "same";
constexpr std::string_view bad = "bad";
}  // namespace outcome

Step stepFor(const UserFile::User& user, const std::optional<VisitorAccount>& account) {
    Step step{user.line, user.change.username, outcome::adds, {}};
    if (!account && !user.change.password) {
        step.outcome = outcome::bad;
        step.detail = "a new user needs a password";
    } else if (account) {
        const auto names = differences(account, user.change);
        step.outcome = names.empty() ? outcome::same : outcome::changes;
        step.detail = fmt::format("{}", fmt::join(names, ", "));
    }
    return step;
}

/// What each line would do now, in their order.
std::vector<Step> planOf(db::Connection& connection, const UserFile& file) {
    std::vector<Step> steps;
    for (const auto& user : file.users)
        steps.push_back(stepFor(user, findVisitor(connection, user.change.username)));
    for (const auto& [number, reason] : file.bad) steps.push_back({number, {}, outcome::bad, reason});
    std::ranges::sort(steps, {}, &Step::line);
    return steps;
}

bool isBad(const std::vector<Step>& steps) {
    return std::ranges::any_of(steps, [](const Step& step) { return step.outcome == outcome::bad; });
}

std::size_t countOf(const std::vector<Step>& steps, std::string_view outcome) {
    return static_cast<std::size_t>(std::ranges::count(steps, outcome, &Step::outcome));
}

/// Before anything is locked: a hash takes its time.
void leaveOutSamePasswords(db::Connection& connection, UserFile& file) {
    for (UserFile::User& user : file.users) {
        if (!user.change.password) continue;
        if (const auto account = findVisitor(connection, user.change.username))
            leaveOutSamePassword(*account, user.change);
    }
}

/// All or none: what it found stands in the plan.
std::vector<Step> writeAll(HostContext& host, const UserFile& file) {
    const auto done = db::inOwnTransaction(host, [&](db::Connection& own) -> db::Outcome<std::vector<Step>> {
        // Of two imports at once, the second finds the users of the first.
        lockRegisters(own);
        auto plan = planOf(own, file);
        if (isBad(plan)) return {false, std::move(plan)};
        for (const auto& [line, change] : file.users) {
            const auto account = findVisitor(own, change.username);
            if (!account || !differences(account, change).empty()) saveVisitor(own, account, change);
        }
        return {true, std::move(plan)};
    });
    return done.value;
}

Value listOf(const std::vector<Step>& steps) {
    ResultGrid grid(importColumns);
    for (const Step& step : steps)
        grid.add({static_cast<double>(step.line), step.username, step.outcome, step.detail});
    return gridOrEmpty(std::move(grid));
}

}  // namespace

Value registers::importUsers(const std::string& table, bool dryRun, int advId) try {
    if (!isLoggedIn()) return {};
    UserFile file = readUserFile(table, GroupNames(connection()));
    leaveOutSamePasswords(connection(), file);
    if (dryRun) return listOf(planOf(connection(), file));
    const auto steps = writeAll(host_, file);
    if (!isBad(steps)) {
        recordChange("importUsers", advId, "import",
                     fmt::format("Intranet/extranet users imported: {} added, {} changed, {} as they are",
                                 countOf(steps, outcome::adds), countOf(steps, outcome::changes),
                                 countOf(steps, outcome::same)));
    }
    return listOf(steps);
} catch (...) {
    raiseFrom("importUsers !");
}

}  // namespace torvex
