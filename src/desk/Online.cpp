// desk: who is logged in where, and letting those go who are gone.

#include <algorithm>
#include <chrono>
#include <optional>

#include "accounts/Actor.h"
#include "accounts/ActorLine.h"
#include "desk/Presence.h"
#include "desk/StoredMoment.h"
#include "desk/desk.h"
#include "platform/Days.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

/// The interface leaves by itself after as long.
constexpr std::chrono::minutes goneAfter{10};

constexpr std::string_view selectOnline =
    "select loginId, name, currentSite, date, time from TORVEX_LOGINS "
    "where sessionId <> '' and (? = '' or currentSite = ?) order by name, loginId";
/// Unless she has gone elsewhere meanwhile. What she may have locked stays locked: a move that runs is no
/// idleness.
constexpr std::string_view seeOut =
    "update TORVEX_LOGINS set currentSite = '' where loginId = ? and currentSite = ?";

constexpr std::size_t onlineColumns = 7;

struct OnlineLogin {
    Presence::Who who;
    std::string website;
    std::optional<DateTime> since;
    std::chrono::seconds idle{0};
};

std::chrono::seconds between(const DateTime& earlier, const DateTime& later) {
    return std::max(secondOf(later) - secondOf(earlier), std::chrono::seconds(0));
}

std::string websiteOf(const std::string& site, const std::string& lang) {
    const std::string one = text::lowerTrim(site);
    const std::string other = text::lowerTrim(lang);
    return one.empty() && other.empty() ? std::string() : one + "." + other;
}

/// Who has told nothing since the server runs has been idle for as long as can be.
std::vector<OnlineLogin> onlineIn(db::Connection& connection, const Presence& presence,
                                  const std::string& website, const DateTime& now) {
    std::vector<OnlineLogin> logins;
    const std::string_view wanted = website;
    auto rows = connection.query(selectOnline, {wanted, wanted});
    while (rows.next()) {
        OnlineLogin login{{static_cast<int>(rows.number("loginId")), rows.text("name")},
                          text::lower(rows.text("currentSite")),
                          storedMoment(rows.view("date"), rows.text("time") + ":00"),
                          {}};
        const auto told = presence.idle(login.who.loginId);
        if (told) {
            login.idle = *told;
        } else if (login.since) {
            login.idle = between(*login.since, now);
        }
        logins.push_back(std::move(login));
    }
    return logins;
}

std::vector<Value> lineOf(const Presence& presence, const OnlineLogin& login) {
    const std::string site(siteOf(login.website));
    const std::string lang(langOf(login.website));
    const auto visit = site.empty() ? std::nullopt : presence.latest(login.who.loginId, site, lang);
    return {login.who.loginId,
            login.who.name,
            site,
            lang,
            visit ? visit->place.pageId : 0,
            login.since ? Value(*login.since) : Value(),
            static_cast<double>(login.idle.count())};
}

}  // namespace

Value desk::getOnline(const std::string& site, const std::string& lang) try {
    ResultGrid grid(onlineColumns);
    for (const auto& login : onlineIn(connection(), *presence_, websiteOf(site, lang), host_.clock.now())) {
        grid.add(lineOf(*presence_, login));
    }
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getOnline !");
}

int desk::freeIdle(const std::string& site, const std::string& lang) try {
    const std::string website = websiteOf(site, lang);
    if (website.empty()) return 0;
    const Actor actor = actorOf(host_);
    int freed = 0;
    for (const auto& login : onlineIn(connection(), *presence_, website, actor.now)) {
        if (login.who.loginId == actor.loginId || login.idle < goneAfter) continue;
        if (connection().execute(seeOut, {login.who.loginId, website}) == 0) continue;
        ++freed;
        recordLeaving(login.who.name, website);
    }
    return freed;
} catch (...) {
    raiseFrom("freeIdle !");
}

/// In the name of who has freed the place. It is done: a trail that can't be written doesn't undo it.
void desk::recordLeaving(const std::string& name, const std::string& website) {
    const Actor actor = actorOf(host_);
    followUp(host_.log, "audit of freeIdle", [&] {
        writeActorLine(host_, actor, 0, "free idle", name + " was idle and has left " + website);
    });
}

}  // namespace torvex
