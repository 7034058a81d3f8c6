#include "support/WorkflowTest.h"

#include <fmt/format.h>

namespace torvex::test {

namespace {

std::string shown(const Value& value) {
    return value.isEmpty() ? "-" : value.toText();
}

}  // namespace

void WorkflowTest::SetUp() {
    ManagerTest::SetUp();
    if (HasFatalFailure()) return;
    login(bert, "bert", "Bert Broker", "session-of-bert");
}

PageId WorkflowTest::inState(const std::string& statuses, int lockedBy) {
    const auto digit = [&](std::size_t at) { return statuses.at(at) - '0'; };
    PageBuilder builder = page(fmt::format("aa.en.{:02}", ++lastNumber_));
    builder.set("editStatus", statuses.substr(0, 1)).set("emailNotification", 5);
    builder.set("lockStatus", digit(1)).set("deleteStatus", digit(2)).set("approveStatus", digit(3));
    if (digit(1) == 1) builder.set("lockedBy", lockedBy).set("lockingDate", earlier);
    if (digit(2) == 1) builder.set("deletedBy", bert).set("deletingDate", earlier);
    if (digit(3) == 1) builder.set("approvedBy", bert).set("approvingDate", earlier);
    return builder.insertInDesignOnly();
}

std::string WorkflowTest::rowOf(PageId pageId) {
    auto rows = connection().query(
        "select editStatus, lockStatus, deleteStatus, approveStatus, lockedBy, lockingDate, deletedBy, "
        "deletingDate, approvedBy, approvingDate, emailNotification from TORVEX_PAGES_DESIGN where pageId = "
        "?",
        {pageId});
    if (!rows.next()) return "no page";
    const auto cell = [&](const char* column) { return shown(rows.value(column)); };
    return fmt::format("{}{}{}{} locked {} {} deleted {} {} approved {} {} mail {}", cell("editStatus"),
                       cell("lockStatus"), cell("deleteStatus"), cell("approveStatus"), cell("lockedBy"),
                       cell("lockingDate"), cell("deletedBy"), cell("deletingDate"), cell("approvedBy"),
                       cell("approvingDate"), cell("emailNotification"));
}

void WorkflowTest::scribbleOnBuffer() {
    constexpr DateTime scribble{1999, 9, 9, 9, 9, 9};
    manager().setPgLockStatus(9);
    manager().setPgLockedBy("?");
    manager().setPgLockingDate(scribble);
    manager().setPgDeleteStatus(9);
    manager().setPgDeletedBy("?");
    manager().setPgDeletingDate(scribble);
    manager().setPgApproveStatus(9);
    manager().setPgApprovedBy("?");
    manager().setPgApprovingDate(scribble);
}

std::string WorkflowTest::bufferText() {
    const auto moment = [](const DateTime& date) {
        if (date == now) return std::string("now");
        if (date == earlier) return std::string("earlier");
        if (date == DateTime{1900, 1, 1, 0, 0, 0}) return std::string("reset");
        return std::string("?");
    };
    const auto& held = manager();
    return fmt::format("lock {} '{}' {}, delete {} '{}' {}, approve {} '{}' {}", held.pgLockStatus(),
                       held.pgLockedBy(), moment(held.pgLockingDate()), held.pgDeleteStatus(),
                       held.pgDeletedBy(), moment(held.pgDeletingDate()), held.pgApproveStatus(),
                       held.pgApprovedBy(), moment(held.pgApprovingDate()));
}

int WorkflowTest::mailFlag(PageId pageId) {
    auto rows =
        connection().query("select emailNotification from TORVEX_PAGES_DESIGN where pageId = ?", {pageId});
    return rows.next() ? static_cast<int>(rows.number("emailNotification", -1)) : -1;
}

std::vector<std::string> WorkflowTest::annasLine(PageId pageId, const std::string& action,
                                                 const std::string& description) {
    const std::string node = cell("select nodeId from TORVEX_PAGES_DESIGN where pageId = " + ident(pageId));
    return {fmt::format("{}|Anna Author|{}|{}|0|{}|{}", anna, ident(pageId), node, action, description)};
}

}  // namespace torvex::test
