// desk: why somebody may do something, or may not.

#include <optional>

#include "accounts/Actor.h"
#include "accounts/AdvancedRights.h"
#include "accounts/DesignRights.h"
#include "accounts/EditRights.h"
#include "accounts/EditScope.h"
#include "accounts/RightReasons.h"
#include "desk/desk.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::size_t whyColumns = 6;
/// A scope may name many; a sentence doesn't.
constexpr std::size_t mostTitles = 3;

constexpr std::string_view selectUsername = "select username from TORVEX_LOGINS where loginId = ?";
constexpr std::string_view selectTitle = "select title from TORVEX_PAGES_DESIGN where nodeId = ?";

/// The one who is asked about; nothing when there is no such login.
std::optional<Actor> subjectOf(db::Connection& connection, int loginId) {
    auto rows = connection.query(selectUsername, {loginId});
    if (!rows.next()) return std::nullopt;
    Actor subject;
    subject.loginId = loginId;
    subject.username = rows.text("username");
    return subject;
}

/// The answer in the making.
class Answer {
  public:
    void verdict(bool isYes, std::string_view what, std::string_view place, std::string_view title = {}) {
        grid_.add({isYes ? "yes" : "no", 0, "", place, what, title});
    }
    void state(std::string_view state, std::string_view place = {}, std::string_view rights = {}) {
        grid_.add({state, 0, "", place, rights, ""});
    }
    void reason(const RightReason& reason, std::string_view titles = {}) {
        grid_.add({reason.kind, reason.roleId, reason.role, reason.places, reason.rights, titles});
    }
    Value take() { return gridOrEmpty(std::move(grid_)); }

  private:
    ResultGrid grid_{whyColumns};
};

/// Titles of pages that the asker may know of.
class Titles {
  public:
    Titles(db::Connection& connection, const Actor& actor) : connection_(connection), actor_(actor) {}

    std::string of(std::string_view places) const {
        std::string titles;
        std::size_t count = 0;
        for (const std::string& node : nodesInScope(places)) {
            if (count == mostTitles) break;
            const std::string title = ofNode(node);
            if (title.empty()) continue;
            titles.append(titles.empty() ? "" : ", ").append(title);
            ++count;
        }
        return titles;
    }
    std::string ofNode(const std::string& node) const {
        if (node.size() < PageIdentity::rootLength) return {};
        if (!mayReadDesign(connection_, actor_, siteOf(node), langOf(node))) return {};
        auto rows = connection_.query(selectTitle, {node});
        return rows.next() ? rows.text("title") : std::string();
    }

  private:
    db::Connection& connection_;
    const Actor& actor_;
};

bool isByPage(const RightReason& reason) {
    return reason.kind == "gives" || reason.kind == "outside";
}

/// In the words of the row: "bg.en", "bg" or "", by what the entry is for.
std::string placeFor(const EntryOffer& offer, std::string_view site, std::string_view lang) {
    const auto counts = offer.placeIn(site, lang);
    std::string place = text::lower(counts.site);
    if (offer.level >= 2) place += "." + text::lower(counts.lang);
    return place;
}

}  // namespace

Value desk::why(int loginId, const std::string& action, const std::string& pageIdent) try {
    Answer answer;
    const PageIdentity page = identify(connection(), pageIdent);
    const Actor asker = actorOf(host_);
    const Titles titles(connection(), asker);
    const std::string title = page.isValid() ? titles.ofNode(page.nodeId) : std::string();
    const auto task = editTaskOf(text::trim(action));
    const std::string word(task ? wordOf(*task) : std::string_view());
    const auto subject = subjectOf(connection(), loginId);
    const bool canBe = page.isValid() && task && subject;
    const bool isGiven = canBe && mayEditPage(connection(), *subject, *task, page.nodeId);
    answer.verdict(isGiven, word, page.nodeId, title);
    if (!subject) answer.state("noLogin");
    if (!page.isValid()) answer.state("noPage");
    if (!task) answer.state("noTask");
    if (!canBe) return answer.take();
    if (subject->isAdministrator()) {
        answer.state("administrator");
        return answer.take();
    }
    for (const RightReason& reason : whyEdit(connection(), loginId, *task, page.nodeId))
        answer.reason(reason, isByPage(reason) ? titles.of(reason.places) : std::string());
    if (!isGiven)
        answer.state("needs", std::string(siteOf(page.nodeId)) + "." + std::string(langOf(page.nodeId)),
                     word);
    return answer.take();
} catch (...) {
    raiseFrom("why !");
}

Value desk::whyEntry(int loginId, const std::string& flag, int advId, const std::string& site,
                     const std::string& lang) try {
    Answer answer;
    const std::string asked = text::lowerTrim(flag);
    const EntryOffer offer = offerOf(connection(), advId);
    const std::string place = placeFor(offer, site, lang);
    const auto subject = subjectOf(connection(), loginId);
    const bool isGiven = subject && mayUseEntry(connection(), *subject, asked, advId, site, lang);
    answer.verdict(isGiven, asked, place);
    const bool isSa = subject && subject->isAdministrator();
    if (!subject) answer.state("noLogin");
    if (isSa) answer.state("administrator");
    if (!subject || isSa) return answer.take();
    if (!offer.has(asked)) {
        answer.state("notOffered");
        return answer.take();
    }
    for (const RightReason& reason : torvex::whyEntry(connection(), loginId, asked, advId, site, lang))
        answer.reason(reason);
    if (!isGiven) answer.state("needs", place, asked);
    return answer.take();
} catch (...) {
    raiseFrom("whyEntry !");
}

}  // namespace torvex
