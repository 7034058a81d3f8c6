#pragma once

#include <string>

#include "modules/forum/Forum.h"
#include "support/RecordsTest.h"

namespace torvex::test {

/// The base of tests of the forum: forum 1 "Plants" of "aa" and "en", in the design and live, whose
/// contributions are new for seven days; topic 1 "Moss & lichen" of the 1st of June. The clock stands at the
/// 15th of June 2026.
class ForumTest : public RecordsTest {
  protected:
    void SetUp() override {
        RecordsTest::SetUp();
        if (HasFatalFailure()) return;
        forum_ = std::make_unique<Forum>(host.context());
        forum_->connect(connection());
        host.application.set("torvex_root_path", "/install/wwwroot/");
        define("TORVEX_FORUM_DESIGN", 1, "Plants");
        define("TORVEX_FORUM_LIVE", 1, "Plants");
        topic(1, "Moss & lichen", "20260601");
    }
    void TearDown() override {
        forum_.reset();
        RecordsTest::TearDown();
    }

    Forum& forum() { return *forum_; }

    void define(const std::string& table, int id, const std::string& name, const Columns& more = {}) {
        Columns columns{{"forum_id", id},      {"forum_site", "aa"},   {"forum_lang", "en"},
                        {"forum_name", name},  {"forum_hotPeriod", 7}, {"forum_reactionsOnline", 1},
                        {"forum_pageSize", 10}};
        columns.insert(columns.end(), more.begin(), more.end());
        row(table, columns);
    }
    /// A column of the forum's definition, in both twins.
    void set(const std::string& column, const Value& value, int forumId = 1) {
        for (const auto* table : {"TORVEX_FORUM_DESIGN", "TORVEX_FORUM_LIVE"}) {
            const std::string statement =
                "update " + std::string(table) + " set " + column + " = ? where forum_id = ?";
            if (value.isNumber()) {
                connection().execute(statement, {value.number(), forumId});
            } else {
                connection().execute(statement, {value.text(), forumId});
            }
        }
    }
    void topic(int id, const std::string& title, const std::string& day, const Columns& more = {},
               int forumId = 1) {
        Columns columns{{"topic_id", id},
                        {"topic_forumId", forumId},
                        {"topic_title", title},
                        {"topic_dateCreation", day}};
        columns.insert(columns.end(), more.begin(), more.end());
        row("TORVEX_FORUM_TOPICS", columns);
    }
    void reaction(int id, const std::string& reference, const std::string& title = "Re",
                  const std::string& day = "20260602", int online = 1, int topicId = 1, int forumId = 1) {
        row("TORVEX_FORUM_REACTIONS", {{"reaction_id", id},
                                       {"reaction_forumId", forumId},
                                       {"reaction_topicId", topicId},
                                       {"reaction_reference", reference},
                                       {"reaction_title", title},
                                       {"reaction_date", day},
                                       {"reaction_online", online}});
    }

  private:
    std::unique_ptr<Forum> forum_;
};

}  // namespace torvex::test
