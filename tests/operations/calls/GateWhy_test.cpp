// What an author is told of her rights is what the gate does.

#include <array>
#include <random>

#include "desk/desk.h"
#include "operations/calls/GateTest.h"

namespace torvex::operations {
namespace {

using Kind = Verdict::Kind;

constexpr int questionsOfAWorld = 250;
constexpr int worlds = 40;

/// Random roles, memberships, rights and scopes, and random questions about them.
class GateWhyTest : public GateTest {
  protected:
    void SetUp() override {
        GateTest::SetUp();
        if (HasFatalFailure()) return;
        language("fr");
        PageId pageId = 100;
        for (const auto* site : sites)
            for (const auto* lang : languages)
                for (const auto* place : places) {
                    std::string node = std::string(site) + "." + lang + place;
                    page(node).id(++pageId).insertInDesignOnly();
                    nodes_.push_back(node);
                    idents_.push_back(pick(2) == 0 ? node : std::to_string(static_cast<int>(pageId)));
                }
        for (int loginId = 50; loginId < 56; ++loginId) {
            const std::string name = "login" + std::to_string(loginId);
            login(loginId, name, name, host.session.id());
        }
        made_.connect(connection());
    }

    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }
    template <typename List>
    auto oneOf(const List& list) {
        return list[static_cast<std::size_t>(pick(static_cast<int>(std::size(list))))];
    }

    void makeWorld() {
        for (const auto* table :
             {"TORVEX_ROLES", "TORVEX_ROLES_LOGINS", "TORVEX_EDIT_RIGHTS", "TORVEX_ADVANCED_RIGHTS"})
            connection().execute(std::string("delete from ") + table);
        for (int roleId = 1; roleId <= 8; ++roleId) {
            // A role whose row is gone gives what its rights say all the same.
            if (pick(8) > 0) row("TORVEX_ROLES", {{"roleId", roleId}, {"roleName", "Role"}});
            for (int n = pick(4); n > 0; --n) hold(roleId, 50 + pick(6));
            for (int n = pick(7); n > 0; --n) addEditRights(roleId);
            for (int n = pick(9); n > 0; --n) addAccess(roleId);
        }
    }
    std::string scope() {
        switch (pick(6)) {
            case 0:
            case 1:
                return "";
            case 2:
                return "All";
            case 3:
                return oneOf(nodes_) + ", " + oneOf(nodes_);
            case 4:
                return "aa.en.77,";
            default:
                return oneOf(nodes_);
        }
    }
    void addEditRights(int roleId) {
        test::Columns columns{
            {"roleId", roleId}, {"site", oneOf(sites)}, {"lang", oneOf(languages)}, {"scope", scope()}};
        for (const auto* task : tasks)
            if (pick(3) == 0) columns.emplace_back(task, 1);
        row("TORVEX_EDIT_RIGHTS", columns);
    }
    void addAccess(int roleId) {
        const std::string site = pick(2) == 0 ? "" : oneOf(sites);
        const std::string lang = pick(2) == 0 ? "" : oneOf(languages);
        advancedRight(roleId, oneOf(entries), site, lang, pick(2) == 0, pick(2) == 0);
    }

    /// Any of the six, now and then the administrator.
    int actAsAnybody() {
        if (pick(25) == 0) {
            actAsSa();
            return sa;
        }
        const int loginId = 50 + pick(6);
        const std::string name = "login" + std::to_string(loginId);
        actAs(loginId, name, name);
        return loginId;
    }
    static bool saysYes(const Value& answer) { return answer.grid().at(0, 0).toText() == "yes"; }
    /// Whether a role is named that gives it, or that she is the administrator.
    static bool hasGround(const Value& answer) {
        for (std::size_t line = 1; line < answer.grid().rows(); ++line) {
            const std::string state = answer.grid().at(0, line).toText();
            if (state == "gives" || state == "administrator") return true;
        }
        return false;
    }

    static constexpr std::array<const char*, 2> sites{"aa", "bb"};
    static constexpr std::array<const char*, 3> languages{"en", "de", "fr"};
    static constexpr std::array<const char*, 5> places{".71", ".71.01", ".71.01.02", ".72", ".72.05"};
    static constexpr std::array<const char*, 5> tasks{"onOff", "move", "publish", "approve", "edit"};
    static constexpr std::array<const char*, 6> actions{"onoff", "MOVE", "publish", "approve", "edit", "fly"};
    /// Of each level, some that offer less than view and edit, and one that isn't there.
    static constexpr std::array<int, 9> entries{21, 22, 63, 10, 111, 120, 213, 221, 999};

    std::vector<std::string> nodes_;
    std::vector<std::string> idents_{"99", "", "aa", "aa.en.99", "aa.en"};
    torvex::desk made_{host.context()};

  private:
    std::mt19937 random_{20260615};
};
INSTANTIATE_TEST_SUITE_P(Engines, GateWhyTest, test::bothEngines(), test::engineName);

TEST_P(GateWhyTest, WhyMayShePublishAgreesWithTheGate) {
    int allowed = 0;
    for (int world = 0; world < worlds; ++world) {
        makeWorld();
        for (int n = 0; n < questionsOfAWorld; ++n) {
            const int loginId = actAsAnybody();
            const std::string action = oneOf(actions);
            const std::string ident = oneOf(idents_);
            const bool isAllowed =
                call(sample({"pageIdent"}, editRight(action, "pageIdent")), {ident}) == Kind::Allowed;
            const Value answer = made_.why(loginId, action, ident);
            ASSERT_EQ(saysYes(answer), isAllowed)
                << loginId << " " << action << " " << ident << " in world " << world;
            ASSERT_EQ(hasGround(answer), isAllowed)
                << loginId << " " << action << " " << ident << " in world " << world;
            if (isAllowed) ++allowed;
        }
    }
    EXPECT_GT(allowed, questionsOfAWorld * worlds / 10) << "hardly anything was allowed";
}

TEST_P(GateWhyTest, WhyMaySheOpenThisAgreesWithTheGate) {
    int allowed = 0;
    for (int world = 0; world < worlds; ++world) {
        makeWorld();
        for (int n = 0; n < questionsOfAWorld; ++n) {
            const int loginId = actAsAnybody();
            const std::string flag = pick(2) == 0 ? "view" : "edit";
            const int entry = oneOf(entries);
            const std::string site = pick(4) == 0 ? "" : oneOf(sites);
            const std::string lang = pick(4) == 0 ? "" : oneOf(languages);
            Right right =
                flag == "view" ? viewAccess(entry, "site", "lang") : editAccess(entry, "site", "lang");
            const bool isAllowed = call(sample({"site", "lang"}, right), {site, lang}) == Kind::Allowed;
            const Value answer = made_.whyEntry(loginId, flag, entry, site, lang);
            ASSERT_EQ(saysYes(answer), isAllowed) << loginId << " " << flag << " " << entry << " " << site
                                                  << "." << lang << " in world " << world;
            ASSERT_EQ(hasGround(answer), isAllowed) << loginId << " " << flag << " " << entry << " " << site
                                                    << "." << lang << " in world " << world;
            if (isAllowed) ++allowed;
        }
    }
    EXPECT_GT(allowed, questionsOfAWorld * worlds / 10) << "hardly anything was allowed";
}

}  // namespace
}  // namespace torvex::operations
