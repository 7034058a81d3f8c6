// desk: where the authors are, what they do, and what they ask of each other.

#include <memory>
#include <optional>

#include "accounts/Actor.h"
#include "accounts/DesignRights.h"
#include "accounts/Logins.h"
#include "accounts/Website.h"
#include "authoring/StatusCodes.h"
#include "desk/Presence.h"
#include "desk/Work.h"
#include "desk/desk.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view selectPage =
    "select nodeId, title, lockStatus, lockedBy, lockingDate from TORVEX_PAGES_DESIGN where pageId = ?";
constexpr std::string_view selectOwnPlace =
    "select loginId from TORVEX_LOGINS where loginId = ? and currentSite = ''";

constexpr std::string_view notHeld = "-1";
constexpr std::string_view holderIsGone = "-2";
constexpr std::string_view noPage = "-3";

constexpr std::size_t pulseColumns = 8;

/// A page of the design, as far as people meet at it.
struct MeetingPage {
    PageId pageId = 0;
    std::string nodeId;
    std::string title;
    int holderId = 0;  ///< 0 for none
    Value heldSince;
};

std::optional<MeetingPage> meetingPage(db::Connection& connection, PageId pageId) {
    if (!(pageId > 0)) return std::nullopt;
    auto rows = connection.query(selectPage, {pageId});
    if (!rows.next()) return std::nullopt;
    const int holder = rows.number("lockStatus") == 1 ? static_cast<int>(rows.number("lockedBy")) : 0;
    return MeetingPage{pageId, rows.text("nodeId"), rows.text("title"), holder, rows.value("lockingDate")};
}

Presence::Doing doingOf(std::string_view word) {
    if (text::equals(text::trim(word), "typing")) return Presence::Doing::Typing;
    return text::equals(text::trim(word), "away") ? Presence::Doing::Away : Presence::Doing::Looking;
}

std::string_view wordOf(Presence::Doing doing) {
    if (doing == Presence::Doing::Typing) return "typing";
    return doing == Presence::Doing::Away ? "away" : "looking";
}

/// Where the page is, whatever the caller says of it; and nowhere where the caller has nothing to do.
Presence::Place placeOf(db::Connection& connection, const Actor& actor, Presence::Place named,
                        const std::optional<MeetingPage>& page) {
    named.pageId = page ? page->pageId : 0;
    if (page) {
        named.site = text::lower(siteOf(page->nodeId));
        named.lang = text::lower(langOf(page->nodeId));
    }
    return mayReadDesign(connection, actor, named.site, named.lang) ? named : Presence::Place();
}

/// One who had left, by another window or as she was idle, is back.
void comeBack(db::Connection& connection, const Actor& actor, const Presence::Place& place) {
    if (!connection.query(selectOwnPlace, {actor.loginId}).next()) return;
    // Where pages are being moved she isn't let in; the tree that she asks for next tells her so.
    (void)enterWebsite(connection, actor.loginId, place.site + "." + place.lang);
}

/// What a pulse answers.
class PulseAnswer {
  public:
    void addVisit(const Presence::Visit& visit) {
        grid_.add({"here", visit.who.loginId, visit.who.name, visit.place.pageId, wordOf(visit.doing),
                   visit.since, "", 0});
    }
    void addAsk(const Presence::Ask& ask) {
        grid_.add({"asked", ask.asker.loginId, ask.asker.name, ask.pageId, "", ask.since, ask.title, 0});
    }
    void addTakenOver(const MeetingPage& page, const std::string& holder) {
        grid_.add({"takenOver", page.holderId, holder, page.pageId, "", page.heldSince, page.title, 0});
    }
    void addCount(std::string_view kind, int number) {
        grid_.add({"count", 0, "", 0, "", Value(), kind, number});
    }
    Value value() { return gridOrEmpty(std::move(grid_)); }

  private:
    ResultGrid grid_{pulseColumns};
};

/// Somebody is asked for a page as long as she has it.
void tellAsks(db::Connection& connection, Presence& presence, const Actor& actor, PulseAnswer& answer) {
    for (const auto& ask : presence.asksOf(actor.loginId)) {
        const auto wanted = meetingPage(connection, ask.pageId);
        if (wanted && wanted->holderId == actor.loginId) {
            answer.addAsk(ask);
        } else {
            presence.answer(actor.loginId, ask.pageId);
        }
    }
}

/// That another one has the page that the author had.
void tellHolder(db::Connection& connection, Presence& presence, const Actor& actor, const MeetingPage& page,
                PulseAnswer& answer) {
    if (page.holderId == actor.loginId) return presence.noteHeld(actor.loginId, page.pageId);
    if (page.holderId > 0 && presence.hasHeld(actor.loginId, page.pageId))
        answer.addTakenOver(page, fullnameOf(connection, page.holderId));
}

/// What waits for the author where she is.
void tellCounts(db::Connection& connection, const Actor& actor, const Presence::Place& place,
                PulseAnswer& answer) {
    for (const std::string_view kind : {"approve", "publish"}) {
        const int number = numberWaiting(connection, actor, kind, place.site, place.lang);
        if (number > 0) answer.addCount(kind, number);
    }
}

}  // namespace

desk::desk(HostContext& host) : desk(host, std::make_shared<Presence>()) {}

Value desk::pulse(const std::string& site, const std::string& lang, PageId pageId,
                  const std::string& doing) try {
    const Actor actor = actorOf(host_);
    if (actor.loginId <= 0) return {};
    const auto page = meetingPage(connection(), pageId);
    const Presence::Place place =
        placeOf(connection(), actor, {text::lowerTrim(site), text::lowerTrim(lang), 0}, page);
    const Presence::Doing does = doingOf(doing);
    presence_->note({{actor.loginId, actor.fullname}, place, does, actor.now});
    PulseAnswer answer;
    if (!place.isNowhere()) {
        if (does != Presence::Doing::Away) comeBack(connection(), actor, place);
        for (const auto& visit : presence_->others(actor.loginId, place.site, place.lang))
            answer.addVisit(visit);
        tellCounts(connection(), actor, place, answer);
        if (page) tellHolder(connection(), *presence_, actor, *page, answer);
    }
    tellAsks(connection(), *presence_, actor, answer);
    return answer.value();
} catch (...) {
    raiseFrom("pulse !");
}

std::string desk::ask(const std::string& pageIdent) try {
    const Actor actor = actorOf(host_);
    if (actor.loginId <= 0) return std::string(status::notLoggedIn);
    const auto page = meetingPage(connection(), pageIdFrom(connection(), pageIdent));
    if (!page) return std::string(noPage);
    if (page->holderId <= 0 || page->holderId == actor.loginId) return std::string(notHeld);
    if (!presence_->isHere(page->holderId)) return std::string(holderIsGone);
    presence_->ask(page->holderId, {{actor.loginId, actor.fullname}, page->pageId, page->title, actor.now});
    return std::string(status::done);
} catch (...) {
    raiseFrom("ask !");
}

void desk::leave() try {
    const Actor actor = actorOf(host_);
    if (actor.loginId <= 0) return;
    presence_->leave(actor.loginId);
    leaveWebsite(connection(), actor.loginId);
} catch (...) {
    raiseFrom("leave !");
}

}  // namespace torvex
