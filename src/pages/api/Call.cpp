#include "pages/api/Call.h"

#include "accounts/Actor.h"
#include "accounts/Logins.h"
#include "operations/calls/Gate.h"
#include "pages/Token.h"
#include "pages/api/Circumstances.h"
#include "pages/api/Json.h"
#include "pages/api/Tokens.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/db/ConnectionSource.h"

namespace torvex::api {

namespace {

namespace json = boost::json;
using operations::ArgumentError;
using operations::GivenValues;
using operations::Operation;
using operations::Outcome;
using operations::Property;
using operations::Right;
using operations::StatusCode;
using operations::Verdict;

/// The word where nobody's name can be told.
constexpr int somebodyElse = 5023;

HostContext inside(HostContext& host, Response& scratch) {
    HostContext made{static_cast<const Services&>(host), host.request, scratch, host.session};
    made.scriptTimeout = host.scriptTimeout;
    made.begin = host.begin;
    return made;
}

json::string text(std::string_view content) {
    return json::string(content);
}

const StatusCode* refusalIn(const Operation& operation, const Value& result) {
    for (const auto& code : operation.codes)
        if (code.isRefusal && code.code == result) return &code;
    return nullptr;
}

bool isReadable(const Property& property) {
    return property.right.kind != Right::Kind::Nobody;
}

}  // namespace

const ProblemKind& lackOfLogin(const Session& session) {
    return session.text(sessionKey::authorName).empty() ? kind::notLoggedIn : kind::loginLost;
}

Calls::Calls(const Shared& shared, HostContext& host, std::string language)
    : shared_(shared),
      host_(host),
      language_(std::move(language)),
      inner_(inside(host, scratch_)),
      run_(shared.classes, inner_, operations::Network{shared.throttle}) {}

/// Runs what may refuse, raise or end the response, and says so under the name.
template <typename Work>
Reply Calls::guarded(const std::string& name, Work&& work) try {
    try {
        Reply reply = work();
        if (auto* problem = std::get_if<Problem>(&reply)) problem->operation = name;
        return reply;
    } catch (const ResponseEnded&) {
        return json::value(nullptr);
    } catch (const ArgumentError& error) {
        Problem problem = unfitting(error);
        problem.operation = name;
        return problem;
    }
} catch (const std::exception& error) {
    Problem problem = this->problem(kind::failed);
    problem.operation = name;
    throw CallFailure(error, std::move(problem));
}

const Operation* Calls::find(const std::string& className, const std::string& operation) const {
    const auto* entry = shared_.classes.findClass(className);
    const auto* found = entry ? entry->findOperation(operation) : nullptr;
    return found && found->right.kind != Right::Kind::Nobody ? found : nullptr;
}

std::string Calls::nameOf(const std::string& className, const std::string& operation) const {
    return shared_.classes.findClass(className)->name + '.' + find(className, operation)->name;
}

Reply Calls::call(const std::string& className, const std::string& name, const GivenValues& arguments) {
    const Operation* operation = find(className, name);
    if (!operation) return problem(kind::notThere);
    const auto* entry = shared_.classes.findClass(className);
    return guarded(entry->name + '.' + operation->name, [&]() -> Reply {
        if (!isCovered(host_.session, entry->name, *operation)) return problem(kind::notCovered);
        const Outcome outcome = run_.run(operations::Call{entry->name, operation->name, arguments});
        if (!outcome.verdict.isAllowed()) return refusedBy(outcome.verdict);
        noteLogin(*operation, outcome.result);
        if (auto refused = refusedBecause(*operation, arguments, outcome.result)) return std::move(*refused);
        return jsonOf(outcome.result, *operation);
    });
}

Reply Calls::read(const std::string& className, const std::string& property) {
    const auto* entry = shared_.classes.findClass(className);
    if (!entry || !entry->findProperty(property)) return problem(kind::notThere);
    return guarded(entry->name + '.' + entry->findProperty(property)->name, [&]() -> Reply {
        if (!isCovered(host_.session, entry->name)) return problem(kind::notCovered);
        const Outcome outcome = run_.run(operations::PropertyRead{entry->name, property});
        if (!outcome.verdict.isAllowed()) return refusedBy(outcome.verdict);
        return jsonOf(outcome.result);
    });
}

Reply Calls::readAll(const std::string& className) {
    const auto* entry = shared_.classes.findClass(className);
    if (!entry || entry->properties.empty()) return problem(kind::notThere);
    json::object all;
    for (const auto& property : entry->properties) {
        if (!isReadable(property)) continue;
        Reply one = read(className, property.name);
        if (std::holds_alternative<Problem>(one)) return one;
        all[property.name] = std::move(std::get<json::value>(one));
    }
    return json::value(std::move(all));
}

Reply Calls::write(const std::string& className, const std::string& property, const json::value& value) {
    const auto* entry = shared_.classes.findClass(className);
    if (!entry || !entry->findProperty(property)) return problem(kind::notThere);
    return guarded(entry->name + '.' + entry->findProperty(property)->name, [&]() -> Reply {
        if (!isCovered(host_.session, entry->name)) return problem(kind::notCovered);
        if (auto lacking = lacksLogin()) return std::move(*lacking);
        const Value wanted = argumentOf(value, property);
        const Outcome outcome = run_.run(operations::PropertyWrite{entry->name, property, wanted});
        if (!outcome.verdict.isAllowed()) return refusedBy(outcome.verdict);
        return json::value(nullptr);
    });
}

Problem Calls::foreign(const Operation& operation) {
    return foreign(operation.right.kind != Right::Kind::Visitor);
}

Problem Calls::foreign(bool needsLogin) {
    auto lacking = needsLogin ? lacksLogin() : std::nullopt;
    return lacking ? std::move(*lacking) : problem(kind::foreign);
}

Problem Calls::notFitting(const Operation& operation, const ArgumentError& error) {
    if (auto lacking = lacksLogin(operation)) return std::move(*lacking);
    return unfitting(error);
}

std::optional<Problem> Calls::lacksLogin(const Operation& operation) {
    return operation.right.kind == Right::Kind::Visitor ? std::nullopt : lacksLogin();
}

std::optional<Problem> Calls::lacksLogin() {
    const auto connection = db::openOwn(host_, db::Purpose::Everything);
    if (ownsItsLogin(*connection, actorOf(host_))) return std::nullopt;
    return refusedBy({Verdict::Kind::NotLoggedIn, {}, {}});
}

Problem Calls::problem(const ProblemKind& kind, std::initializer_list<Place> places) const {
    Problem made = Problem::of(kind);
    made.detail = shared_.words.sentence(language_, kind.label, places);
    return made;
}

Problem Calls::refusedBy(const Verdict& verdict) const {
    switch (verdict.kind) {
        case Verdict::Kind::NotLoggedIn:
            return problem(lackOfLogin(host_.session));
        case Verdict::Kind::NotEnrolled:
            return problem(kind::notEnrolled);
        case Verdict::Kind::NoRight:
            return problem(kind::noRight);
        case Verdict::Kind::Withheld: {
            Problem made = problem(kind::withheld, {{"argument", verdict.argument}});
            made.more["argument"] = text(verdict.argument);
            return made;
        }
        case Verdict::Kind::Wait: {
            Problem made = problem(kind::lockedOut, {{"seconds", std::to_string(verdict.wait.count())}});
            made.wait = verdict.wait;
            return made;
        }
        default:
            return problem(kind::notThere);
    }
}

Problem Calls::unfitting(const ArgumentError& error) const {
    const std::string needed = shared_.words.sentence(language_, error.need());
    Problem made = problem(kind::notFitting, {{"argument", error.argument()}, {"needed", needed}});
    made.more["argument"] = text(error.argument());
    return made;
}

std::optional<Problem> Calls::refusedBecause(const Operation& operation, const GivenValues& arguments,
                                             const Value& result) {
    const StatusCode* code = refusalIn(operation, result);
    if (!code) return std::nullopt;
    Problem made = Problem::of(kind::refused);
    made.title = code->meaning;
    made.name = code->label.kind;
    const Circumstances told = circumstancesOf(host_, operation, *code, arguments);
    const std::string holder =
        told.holder.empty() ? shared_.words.sentence(language_, somebodyElse) : told.holder;
    made.detail = shared_.words.sentence(
        language_, code->label.number,
        {{"holder", holder}, {"since", told.since}, {"parent", told.parent}, {"address", told.address}});
    made.more["code"] = jsonOf(code->code);
    if (!told.holder.empty()) made.more["holder"] = text(told.holder);
    return made;
}

void Calls::noteLogin(const Operation& operation, const Value& result) {
    if (!operation.passwordTest || result != operation.passwordTest->passed) return;
    pageToken::renew(host_.session);
    // Whoever gets it has just shown to know the password, and may go on without loading a page.
    host_.response.addHeader("X-Torvex-Token", pageToken::of(host_.session));
}

}  // namespace torvex::api
