#include <algorithm>
#include <functional>

#include "accounts/Actor.h"
#include "accounts/Logins.h"
#include "accounts/SecondFactor.h"
#include "desk/Export.h"
#include "operations/register/NeedLabels.h"
#include "pages/api/Answers.h"
#include "pages/api/Api.h"
#include "pages/api/Tokens.h"
#include "platform/DateTime.h"
#include "platform/HitCounter.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Session.h"
#include "platform/db/ConnectionSource.h"
#include "platform/text/Text.h"

namespace torvex::api {

namespace {

constexpr std::string_view ending = ".csv";

const Export* exportAt(const Request& request) {
    const std::string path = request.serverVariable("script_name");
    const std::string name = path.substr(path.rfind('/') + 1);
    for (const Export& one : exports())
        if (text::equals(name, std::string(one.name) + std::string(ending))) return &one;
    return nullptr;
}

bool isDayOrNothing(const std::string& day) {
    return day.empty() || isDate8(day);
}

/// Nothing when a day is none.
std::optional<ExportChoice> choiceOf(const Request& request) {
    ExportChoice choice{request.queryString("site"), request.queryString("lang"), request.queryString("from"),
                        request.queryString("to"), request.queryString("filters")};
    if (!isDayOrNothing(choice.from) || !isDayOrNothing(choice.to)) return std::nullopt;
    return choice;
}

Problem badDay(const HostContext& host, const Api& api) {
    const std::string needed = api.words.sentence(languageOf(host, api.words), operations::need::days);
    Problem problem = problemFor(host, api, kind::notFitting, {{"argument", "from, to"}, {"needed", needed}});
    problem.more["argument"] = "from, to";
    return problem;
}

void write(HostContext& host, db::Connection& connection, const Export& list, const ExportChoice& choice) {
    host.response.contentType = "text/csv";
    host.response.cacheControl = "no-store";
    addFields(host.response);
    host.response.addHeader("Content-Disposition",
                            "attachment; filename=\"" + std::string(list.name) + ".csv\"");
    host.hits.flush();
    std::vector<Value> head;
    for (const auto column : list.columns) head.emplace_back(column);
    host.response.write(csvLine(head));
    list.rows(connection, choice,
              [&](const std::vector<Value>& cells) { host.response.write(csvLine(cells)); });
}

}  // namespace

void answerExport(HostContext& host, Api& api) {
    const Export* list = exportAt(host.request);
    if (!list) return answer(host.response, problemFor(host, api, kind::notThere));
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    const Actor actor = actorOf(host);
    if (!ownsItsLogin(*connection, actor))
        return answer(host.response, problemFor(host, api, lackOfLogin(host.session)));
    if (mustEnrol(*connection, actor)) return answer(host.response, problemFor(host, api, kind::notEnrolled));
    const auto choice = choiceOf(host.request);
    if (!choice) return answer(host.response, badDay(host, api));
    if (!coversReading(host.session)) return answer(host.response, problemFor(host, api, kind::notCovered));
    if (!list->mayRead(*connection, actor, *choice))
        return answer(host.response, problemFor(host, api, kind::noRight));
    write(host, *connection, *list, *choice);
}

}  // namespace torvex::api
