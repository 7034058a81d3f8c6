// The administration menu as it is laid down.

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>

#include "accounts/AdminEntries.h"
#include "platform/text/Text.h"
#include "records/Vocabulary.h"
#include "support/RightsTest.h"
#include "support/SourceFolder.h"

namespace torvex::test {
namespace {

namespace fs = std::filesystem;

struct Entry {
    int advId;
    int level;
    std::string reference;
    std::string title;
    std::string icon;
    std::string program;
    bool view;
    bool edit;
    bool audit;
};

class MenuTest : public RightsTest {
  protected:
    void SetUp() override {
        RightsTest::SetUp();
        if (HasFatalFailure()) return;
        auto rows = connection().query("select * from TORVEX_ADVANCED order by advLevel, advReference");
        while (rows.next()) {
            entries.push_back({static_cast<int>(rows.number("advId")),
                               static_cast<int>(rows.number("advLevel")), rows.text("advReference"),
                               rows.text("advTitle"), rows.text("advIcon"), rows.text("advProgram"),
                               rows.number("advView") == 1, rows.number("advEdit") == 1,
                               rows.number("advAudit") == 1});
        }
        ASSERT_FALSE(entries.empty());
    }

    template <typename Check>
    void forEach(Check check) {
        for (const auto& entry : entries) {
            SCOPED_TRACE(entry.advId);
            check(entry);
        }
    }
    bool isBranch(const Entry& branch) const {
        return std::any_of(entries.begin(), entries.end(), [&](const Entry& entry) {
            return entry.level == branch.level && entry.reference.starts_with(branch.reference + ".");
        });
    }

    std::vector<Entry> entries;
};
INSTANTIATE_TEST_SUITE_P(Engines, MenuTest, bothEngines(), engineName);

TEST_P(MenuTest, HasAnEntryForEverythingThatIsAdministered) {
    std::map<std::string, int> levels;
    for (const auto& entry : entries) levels[entry.program] = entry.level;
    const std::map<std::string, int> needed{{"sites", 0},
                                            {"languages", 0},
                                            {"logins", 0},
                                            {"loginsOnline", 0},
                                            {"roles", 0},
                                            {"groups", 0},
                                            {"users", 0},
                                            {"applications", 0},
                                            {"interfaceLanguages", 0},
                                            {"vocabulary", 0},
                                            {"settings", 0},
                                            {"mySettings", 0},
                                            {"servers", 0},
                                            {"auditTrail", 0},
                                            {"torvex_search/catalogue", 0},
                                            {"images", 1},
                                            {"documents", 1},
                                            {"metadata", 1},
                                            {"websiteTitle", 2},
                                            {"locks", 2},
                                            {"statistics", 2},
                                            {"templates", 2},
                                            {"baseTemplates", 2},
                                            {"stylesheets", 2},
                                            {"htmlFeeds", 2},
                                            {"xmlFeeds", 2},
                                            {"torvex_msgBoard/categories", 2},
                                            {"torvex_newsflash/newsflashes", 2},
                                            {"torvex_forum/forums", 2},
                                            {"torvex_dynMenu/menus", 2},
                                            {"torvex_search/search", 2}};
    for (const auto& [program, level] : needed) {
        const auto found = levels.find("/torvex/" + program + ".asp");
        ASSERT_NE(found, levels.end()) << program;
        EXPECT_EQ(found->second, level) << program;
    }
    const auto leaves = std::count_if(entries.begin(), entries.end(),
                                      [this](const Entry& entry) { return !isBranch(entry); });
    EXPECT_EQ(static_cast<std::size_t>(leaves), needed.size());
}

TEST_P(MenuTest, TheNumbersThatTheProgramKnowsAreThoseOfItsEntries) {
    namespace known = adminEntry;
    const std::map<int, std::string> programs{{known::sites, "sites"},
                                              {known::languages, "languages"},
                                              {known::logins, "logins"},
                                              {known::roles, "roles"},
                                              {known::loginsOnline, "loginsOnline"},
                                              {known::groups, "groups"},
                                              {known::users, "users"},
                                              {known::applications, "applications"},
                                              {known::interfaceLanguages, "interfaceLanguages"},
                                              {known::vocabulary, "vocabulary"},
                                              {known::settings, "settings"},
                                              {known::servers, "servers"},
                                              {known::auditTrail, "auditTrail"},
                                              {known::catalogue, "torvex_search/catalogue"},
                                              {known::images, "images"},
                                              {known::documents, "documents"},
                                              {known::metadata, "metadata"},
                                              {known::websiteTitle, "websiteTitle"},
                                              {known::locks, "locks"},
                                              {known::statistics, "statistics"},
                                              {known::templates, "templates"},
                                              {known::baseTemplates, "baseTemplates"},
                                              {known::stylesheets, "stylesheets"},
                                              {known::htmlFeeds, "htmlFeeds"},
                                              {known::xmlFeeds, "xmlFeeds"},
                                              {known::messageBoard, "torvex_msgBoard/categories"},
                                              {known::newsflash, "torvex_newsflash/newsflashes"},
                                              {known::forum, "torvex_forum/forums"},
                                              {known::dynamicMenu, "torvex_dynMenu/menus"},
                                              {known::search, "torvex_search/search"}};
    for (const auto& [advId, program] : programs) {
        EXPECT_EQ(cell("select advProgram from TORVEX_ADVANCED where advId = " + std::to_string(advId)),
                  "/torvex/" + program + ".asp");
    }
}

TEST_P(MenuTest, ReferencesStepByThreeCharactersALevelAndAreNoNumbers) {
    static const std::regex path("[a-z][0-9](\\.[0-9][0-9])*");
    std::set<std::string> seen;
    forEach([&](const Entry& entry) {
        EXPECT_TRUE(std::regex_match(entry.reference, path)) << entry.reference;
        EXPECT_FALSE(text::isNumeric(entry.reference));
        EXPECT_TRUE(seen.insert(entry.reference).second) << "audit lines find an entry by its reference";
        EXPECT_TRUE(entry.level >= 0 && entry.level <= 2);
    });
}

TEST_P(MenuTest, EveryEntryBelowAnotherHasItsParentOnItsLevel) {
    std::set<std::pair<int, std::string>> places;
    for (const auto& entry : entries) places.emplace(entry.level, entry.reference);
    forEach([&](const Entry& entry) {
        if (entry.reference.size() <= 2) return;
        EXPECT_TRUE(places.contains({entry.level, entry.reference.substr(0, entry.reference.size() - 3)}));
    });
}

TEST_P(MenuTest, AReferenceBeginsAnotherOnlyWhereThatIsBelowIt) {
    for (const auto& a : entries) {
        for (const auto& b : entries) {
            if (a.advId == b.advId || a.level != b.level || !b.reference.starts_with(a.reference)) continue;
            EXPECT_EQ(b.reference[a.reference.size()], '.') << a.reference << ", " << b.reference;
        }
    }
}

TEST_P(MenuTest, ABranchOpensNothingAndALeafSomethingOfItsOwn) {
    std::set<std::string> programs;
    forEach([&](const Entry& entry) {
        if (isBranch(entry)) {
            EXPECT_EQ(entry.program, "");
            EXPECT_FALSE(entry.view || entry.edit || entry.audit);
        } else {
            EXPECT_TRUE(entry.program.starts_with("/torvex/") && entry.program.ends_with(".asp"));
            EXPECT_TRUE(programs.insert(text::lower(entry.program)).second) << entry.program;
        }
    });
}

TEST_P(MenuTest, OnlyTheOwnSettingsAreOpenToEveryLogin) {
    forEach([&](const Entry& entry) {
        const bool open = !isBranch(entry) && !entry.view && !entry.edit;
        EXPECT_EQ(open, entry.program == "/torvex/mySettings.asp") << entry.program;
    });
}

TEST_P(MenuTest, WhatCanBeEditedCanBeViewedAndIsAudited) {
    forEach([&](const Entry& entry) {
        EXPECT_TRUE(!entry.edit || entry.view);
        EXPECT_EQ(entry.audit, entry.edit);
    });
}

TEST_P(MenuTest, EveryTitleIsALabelOfTheVocabularyAndIsUniqueOnItsLevel) {
    std::set<std::pair<int, std::string>> titles;
    forEach([&](const Entry& entry) {
        ASSERT_TRUE(text::isNumeric(entry.title));
        const std::string title = vocabularyText(connection(), "en", text::toNumber(entry.title));
        EXPECT_NE(title, "") << entry.title;
        EXPECT_FALSE(text::contains(title, "#"));
        EXPECT_TRUE(titles.emplace(entry.level, title).second) << title;
    });
}

TEST_P(MenuTest, EveryIconIsASmallGifWithItsDrawing) {
    const fs::path root = test::sourceFolder();
    forEach([&](const Entry& entry) {
        const fs::path icon = root / "install/files/wwwroot/torvex/images" / entry.icon;
        ASSERT_EQ(icon.extension(), ".gif");
        std::ifstream in(icon, std::ios::binary);
        char head[10] = {};
        ASSERT_TRUE(in.read(head, sizeof head)) << icon;
        EXPECT_TRUE(std::string_view(head, 6) == "GIF89a" || std::string_view(head, 6) == "GIF87a");
        EXPECT_EQ(head[6] + 256 * head[7], 20) << icon;
        EXPECT_EQ(head[8] + 256 * head[9], 20) << icon;
        EXPECT_LT(fs::file_size(icon), 2000U);
        EXPECT_TRUE(fs::exists((root / "artwork/menu" / entry.icon).replace_extension(".svg"))) << icon;
    });
}

TEST_P(MenuTest, EveryDrawingBelongsToAnEntry) {
    std::set<std::string> icons;
    for (const auto& entry : entries) icons.insert(entry.icon);
    for (const auto& file : fs::directory_iterator(fs::path(test::sourceFolder()) / "artwork/menu")) {
        EXPECT_TRUE(icons.contains(file.path().stem().string() + ".gif")) << file.path();
    }
}

TEST_P(MenuTest, TheMapOfTheAdministratorHasEveryEntryAndClosesEveryBranch) {
    actAsSa();
    const std::string map = manager().getAdvancedMap("aa", "en");
    static const std::regex record(
        "([0-9]+)#([^#]*)#[^#]+#adv_[A-Za-z]+\\.gif#([^#]+)#([01])#([12])#([01])###");
    std::size_t count = 0;
    int depth = 0;
    for (auto it = std::sregex_iterator(map.begin(), map.end(), record); it != std::sregex_iterator(); ++it) {
        const auto& entry = entries.at(count++);
        EXPECT_EQ((*it)[1], std::to_string(entry.advId));
        EXPECT_EQ((*it)[3] == " ", isBranch(entry));
        EXPECT_EQ((*it)[4] == "1", isBranch(entry));
        depth -= std::stoi((*it)[6]);
        EXPECT_EQ(std::stoi((*it)[5]), depth + 1);
        if (isBranch(entry)) ++depth;
    }
    EXPECT_EQ(count, entries.size());
    EXPECT_TRUE(map.ends_with("###" + std::to_string(depth + 1) + "###")) << map;
}

}  // namespace
}  // namespace torvex::test
