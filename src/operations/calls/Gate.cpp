#include "operations/calls/Gate.h"

#include <algorithm>

#include "accounts/Actor.h"
#include "accounts/LoginAttempt.h"
#include "authoring/PageIdentList.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex::operations {

namespace {

using Kind = Verdict::Kind;

Verdict outOfReach(const std::string& name) {
    return {Kind::OutOfReach, name + " can't be used over the network."};
}

Verdict notLoggedIn() {
    return {Kind::NotLoggedIn, "You are not logged in."};
}

Verdict noRight() {
    return {Kind::NoRight, "You do not have the right to do this."};
}

Verdict tooManyTries(std::chrono::seconds wait) {
    return {Kind::Wait,
            "There were too many failed logins. Wait " + std::to_string(wait.count()) +
                " seconds, then try again.",
            wait};
}

/// The values of a call by the names of their arguments.
class Values {
  public:
    Values(const std::vector<Argument>& arguments, const std::vector<Value>& values)
        : arguments_(arguments), values_(values) {}

    /// "" for the name "": the right covers nothing of the kind.
    std::string text(const std::string& name) const { return name.empty() ? "" : of(name).toText(); }
    double number(const std::string& name) const { return of(name).toNumber(); }

  private:
    const Value& of(const std::string& name) const {
        const auto found =
            std::find_if(arguments_.begin(), arguments_.end(),
                         [&name](const Argument& argument) { return text::equals(argument.name, name); });
        if (found == arguments_.end()) throw Error("the right names the argument \"" + name + "\"");
        return values_.at(static_cast<std::size_t>(found - arguments_.begin()));
    }

    const std::vector<Argument>& arguments_;
    const std::vector<Value>& values_;
};

/// In the site and language where the page is, not where a caller says that it is.
bool mayEdit(cManager& manager, const std::string& action, const PageIdentity& page) {
    return page.isValid() && manager.checkEditRights(action, std::string(siteOf(page.nodeId)),
                                                     std::string(langOf(page.nodeId)), page.nodeId);
}

bool mayEditAll(cManager& manager, db::Connection& connection, const std::string& action,
                const PageIdentList& pages) {
    const auto& entries = pages.entries();
    return std::all_of(entries.begin(), entries.end(), [&](const std::string& entry) {
        return mayEdit(manager, action, identify(connection, entry));
    });
}

bool hasEditRight(cManager& manager, db::Connection& connection, const Right& right, const Values& values) {
    const PageIdentList pages(values.text(right.page));
    if (!pages.entries().empty()) return mayEditAll(manager, connection, right.detail, pages);
    if (right.site.empty() || right.lang.empty()) return false;
    const std::string site = values.text(right.site);
    const std::string lang = values.text(right.lang);
    if (!right.page.empty()) return manager.checkEditRights(right.detail, site, lang);
    return !manager.getLoginScope(site, lang, right.detail).empty();
}

bool hasAccess(cManager& manager, const Right& right, const Values& values) {
    return manager.checkAdvRights(right.detail, right.advId, values.text(right.site),
                                  values.text(right.lang));
}

Verdict verdictFor(bool allowed) {
    return allowed ? Verdict() : noRight();
}

Verdict judge(cManager& manager, db::Connection& connection, const Right& right, const Values& values,
              const std::string& name) {
    if (right.kind == Right::Kind::Visitor) return {};
    if (right.kind == Right::Kind::Nobody) return outOfReach(name);
    if (!manager.getLoginState()) return notLoggedIn();
    switch (right.kind) {
        case Right::Kind::AnyLogin:
            return {};
        case Right::Kind::EditRight:
            return verdictFor(hasEditRight(manager, connection, right, values));
        case Right::Kind::AdvancedRight:
            return verdictFor(hasAccess(manager, right, values));
        case Right::Kind::OneselfOrAdvancedRight:
            return verdictFor(values.number(right.login) == manager.loginId() ||
                              hasAccess(manager, right, values));
        case Right::Kind::OnlySa:
            return verdictFor(isAdministrator(manager.username()));
        default:
            return outOfReach(name);
    }
}

/// The name of a withheld argument that doesn't have its default; null when there is none.
const std::string* withheldIn(const Operation& operation, const std::vector<Value>& values) {
    for (std::size_t i = 0; i < operation.arguments.size(); ++i) {
        const auto& argument = operation.arguments[i];
        if (argument.withheld && argument.defaultValue != values.at(i)) return &argument.name;
    }
    return nullptr;
}

/// Nobody guesses who gives no password: the session's own login is then looked at again.
bool isTyped(const std::vector<Value>& values) {
    return std::any_of(values.begin(), values.end(),
                       [](const Value& value) { return !value.toText().empty(); });
}

LoginAttempt attemptOf(GuessThrottle& throttle, const HostContext& host, const Operation& operation,
                       const std::vector<Value>& values) {
    return {throttle, LoginAttempt::Kind::Author, host.request.serverVariable("remote_addr"),
            Values(operation.arguments, values).text(operation.passwordTest->name)};
}

}  // namespace

Verdict Gate::mayCall(const Operation& operation, const std::vector<Value>& values) {
    cManager manager(host_);
    manager.connect(connection_);
    const Verdict verdict =
        judge(manager, connection_, operation.right, Values(operation.arguments, values), operation.name);
    if (!verdict.isAllowed()) return verdict;
    if (const auto* name = withheldIn(operation, values)) return outOfReach("The argument " + *name);
    if (!operation.passwordTest || !isTyped(values)) return {};
    const auto wait = attemptOf(throttle_, host_, operation, values).wait();
    return wait.count() > 0 ? tooManyTries(wait) : Verdict();
}

Verdict Gate::mayUse(const Property& property) {
    cManager manager(host_);
    manager.connect(connection_);
    return judge(manager, connection_, property.right, Values({}, {}), property.name);
}

void Gate::called(const Operation& operation, const std::vector<Value>& values, const Value& result) {
    if (!operation.passwordTest || !isTyped(values)) return;
    LoginAttempt attempt = attemptOf(throttle_, host_, operation, values);
    if (result == operation.passwordTest->failed) attempt.failed();
    if (result == operation.passwordTest->passed) attempt.succeeded();
}

}  // namespace torvex::operations
