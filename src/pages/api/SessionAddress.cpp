#include <array>
#include <map>

#include "accounts/Actor.h"
#include "accounts/EditRights.h"
#include "accounts/Logins.h"
#include "accounts/SecondFactor.h"
#include "pages/api/Answers.h"
#include "pages/api/Api.h"
#include "pages/api/BatchRequest.h"
#include "pages/api/Json.h"
#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/db/ConnectionSource.h"
#include "platform/text/Text.h"

namespace torvex::api {

namespace {

namespace json = boost::json;

constexpr std::string_view selectPages =
    "select r.* from TORVEX_EDIT_RIGHTS r, TORVEX_ROLES_LOGINS l where l.loginId = ? and r.roleId = l.roleId "
    "order by r.site, r.lang";
constexpr std::string_view selectEntries =
    "select r.advId, r.site, r.lang, max(coalesce(r.viewAccess, 0)) as viewing, "
    "max(coalesce(r.editAccess, 0)) as editing from TORVEX_ADVANCED_RIGHTS r, TORVEX_ROLES_LOGINS l "
    "where l.loginId = ? and r.roleId = l.roleId group by r.advId, r.site, r.lang "
    "order by r.advId, r.site, r.lang";

json::string textOf(std::string_view content) {
    return json::string(text::toValidUtf8(text::trim(content)));
}

/// Somewhere in the site and language: the scope of a right isn't told here.
json::array pageRights(db::Connection& connection, int loginId) {
    std::map<std::pair<std::string, std::string>, EditRights> found;
    auto rows = connection.query(selectPages, {loginId});
    while (rows.next()) {
        EditRights& rights = found[{text::lowerTrim(rows.text("site")), text::lowerTrim(rows.text("lang"))}];
        for (const EditTask task : editTasks)
            if (rows.number(wordOf(task)) == 1) rights.give(task);
    }
    json::array list;
    for (const auto& [place, rights] : found) {
        json::array tasks;
        for (const EditTask task : editTasks)
            if (rights.has(task)) tasks.emplace_back(json::string(wordOf(task)));
        if (!tasks.empty())
            list.push_back(json::object{
                {"site", textOf(place.first)}, {"lang", textOf(place.second)}, {"may", std::move(tasks)}});
    }
    return list;
}

json::array entryRights(db::Connection& connection, int loginId) {
    json::array list;
    auto rows = connection.query(selectEntries, {loginId});
    while (rows.next())
        list.push_back(json::object{{"entry", static_cast<int>(rows.number("advId"))},
                                    {"site", textOf(rows.text("site"))},
                                    {"lang", textOf(rows.text("lang"))},
                                    {"view", rows.number("viewing") == 1},
                                    {"edit", rows.number("editing") == 1}});
    return list;
}

json::object rightsOf(db::Connection& connection, const Actor& actor) {
    if (actor.isAdministrator()) return {{"all", true}, {"pages", json::array()}, {"entries", json::array()}};
    return {{"all", false},
            {"pages", pageRights(connection, actor.loginId)},
            {"entries", entryRights(connection, actor.loginId)}};
}

/// A group of tools is there unless a setting switches it off, the login's or else the installation's.
bool isOn(const HostContext& host, std::string_view key) {
    const Value own = host.session.get(key);
    const Value value = own.isEmpty() ? host.application.get(key) : own;
    return value.isEmpty() || value.isTrue();
}

json::object editorTools(const HostContext& host) {
    namespace key = applicationKey;
    return {{"styles", isOn(host, key::editorStyles)},       {"headings", isOn(host, key::editorHeadings)},
            {"fontname", isOn(host, key::editorFontname)},   {"fontsize", isOn(host, key::editorFontsize)},
            {"fontcolor", isOn(host, key::editorFontcolor)}, {"backcolor", isOn(host, key::editorBackcolor)}};
}

json::object limits(const Api& api) {
    return {{"callsPerSecond", static_cast<int>(api.ofSessions.perSecond)},
            {"callsAtOnce", static_cast<int>(api.ofSessions.atOnce)},
            {"callsInBatch", mostCalls},
            {"jsonDepth", deepest}};
}

json::value loginOf(db::Connection& connection, const Actor& actor) {
    if (!actor.isLoggedIn() || !ownsItsLogin(connection, actor)) return nullptr;
    json::object login{{"loginId", actor.loginId},
                       {"username", textOf(actor.username)},
                       {"name", textOf(actor.fullname)},
                       {"isAdministrator", actor.isAdministrator()}};
    if (mustEnrol(connection, actor)) login["mustEnrol"] = true;
    return login;
}

}  // namespace

void answerSession(HostContext& host, Api& api) {
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    const Actor actor = actorOf(host);
    json::object all{{"login", loginOf(*connection, actor)}};
    if (!all["login"].is_null()) all["rights"] = rightsOf(*connection, actor);
    all["interfaceLanguage"] = textOf(languageOf(host, api.words));
    all["serverTime"] = jsonOf(host.clock.now());
    all["editor"] = editorTools(host);
    all["limits"] = limits(api);
    all["version"] = json::string(TORVEX_VERSION);
    answer(host.response, all);
}

}  // namespace torvex::api
