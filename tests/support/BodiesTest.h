#pragma once

#include <fmt/format.h>

#include "support/PublishTest.h"

namespace torvex::test {

/// The base of tests of body editing: pages in any state, and bodies in a form that can be compared.
class BodiesTest : public PublishTest {
  protected:
    /// Published, and not held by anybody.
    PageBuilder published(const std::string& nodeId) {
        PageBuilder builder = page(nodeId);
        builder.set("editStatus", "P").set("lockStatus", 0).set("deleteStatus", 0).set("approveStatus", 0);
        return builder;
    }
    PageBuilder lockedBy(const std::string& nodeId, int loginId) {
        PageBuilder builder = published(nodeId);
        builder.set("lockStatus", 1).set("lockedBy", loginId);
        return builder;
    }

    /// "type|feed|text" of a body of the design; "none" when it isn't there.
    std::string designBodyOf(PageId pageId, int bodyId) {
        auto rows = connection().query(
            "select bodyType, feedId, bodyText from TORVEX_BODIES_DESIGN where pageId = ? and bodyId = ?",
            {pageId, bodyId});
        if (!rows.next()) return "none";
        return rows.text("bodyType") + "|" + rows.text("feedId") + "|" + rows.text("bodyText");
    }
    /// Statuses, editor, moment of the edit, who marked it for deletion and when; "-" for null.
    std::string pageState(PageId pageId) {
        std::string state = statuses(pageId);
        for (const char* column : {"editor", "editingDate", "deletedBy", "deletingDate"}) {
            state += " " + design(pageId, column);
        }
        return state;
    }
    static constexpr const char* editedByAnna = " 7 2026-06-15T12:00:00 - -";
};

}  // namespace torvex::test
