#include "operations/calls/Gate.h"

#include <algorithm>
#include <array>

#include "accounts/Actor.h"
#include "accounts/AdminEntries.h"
#include "accounts/AdvancedRights.h"
#include "accounts/DoorLog.h"
#include "accounts/EditRights.h"
#include "accounts/Logins.h"
#include "accounts/SecondFactor.h"
#include "authoring/PageIdentList.h"
#include "media/MediaKind.h"
#include "modules/forum/ForumPlace.h"
#include "operations/calls/CallValues.h"
#include "operations/calls/DesignReading.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/Request.h"
#include "platform/text/Text.h"
#include "records/AuditTrail.h"
#include "records/PageIdentity.h"

namespace torvex::operations {

using Kind = Verdict::Kind;

Verdict outOfReach(const std::string& name) {
    return {Kind::OutOfReach, name + " can't be used over the network."};
}

Verdict withheld(const std::string& argument) {
    Verdict verdict{Kind::Withheld, "The argument " + argument + " can't be given over the network."};
    verdict.argument = argument;
    return verdict;
}

namespace {

Verdict notLoggedIn() {
    return {Kind::NotLoggedIn, "You are not logged in."};
}

Verdict notEnrolled() {
    return {Kind::NotEnrolled, "A role of yours demands a second factor. Set it up first."};
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

/// All that is open, beside what visitors may do, to a login that must set up a second factor first.
bool isEnrolment(std::string_view name) {
    constexpr std::array<std::string_view, 3> open{"getSecondFactor", "beginSecondFactor",
                                                   "confirmSecondFactor"};
    return std::find(open.begin(), open.end(), name) != open.end();
}

/// Who calls, and by what it is looked up what he may do.
struct Caller {
    db::Connection& connection;
    const Actor& actor;
};

/// In the site and language where the page is, not where a caller says that it is.
bool mayEditAll(const Caller& caller, EditTask task, const PageIdentList& pages) {
    const auto& entries = pages.entries();
    return std::all_of(entries.begin(), entries.end(), [&](const std::string& entry) {
        const PageIdentity page = identify(caller.connection, entry);
        return page.isValid() && mayEditPage(caller.connection, caller.actor, task, page.nodeId);
    });
}

/// The same where there must be one.
bool mayEditEach(const Caller& caller, EditTask task, const PageIdentList& pages) {
    return !pages.entries().empty() && mayEditAll(caller, task, pages);
}

bool hasEditRight(const Caller& caller, const Right& right, const CallValues& values) {
    const auto task = editTaskOf(right.detail);
    if (!task) return false;
    const PageIdentList pages(values.text(right.page));
    if (!right.otherPage.empty()) {
        const PageIdentList others(values.text(right.otherPage));
        return mayEditEach(caller, *task, pages) && mayEditEach(caller, *task, others);
    }
    if (!pages.entries().empty()) return mayEditAll(caller, *task, pages);
    if (right.site.empty() || right.lang.empty()) return false;
    const std::string site = text::lowerTrim(values.text(right.site));
    const std::string lang = text::lowerTrim(values.text(right.lang));
    const auto isAllowed = right.page.empty() ? mayEditSomewhere : mayEditTree;
    return isAllowed(caller.connection, caller.actor, *task, site, lang);
}

int entryOf(const Right& right, const CallValues& values) {
    const bool isDocuments =
        !right.media.empty() && mediaKindOf(values.text(right.media)) == MediaKind::Documents;
    return isDocuments ? adminEntry::documents : right.advId;
}

/// Nobody but who has the entry everywhere learns that a forum isn't there.
bool hasAccessAtForum(const Caller& caller, const Right& right, int forumId) {
    const auto place = placeOfForum(caller.connection, forumId).value_or(ForumPlace());
    return mayUseEntry(caller.connection, caller.actor, right.detail, right.advId, place.site, place.lang);
}

bool hasAccess(const Caller& caller, const Right& right, const CallValues& values) {
    if (!right.forum.empty()) {
        const int forumId = static_cast<int>(values.number(right.forum));
        if (forumId != 0 || right.site.empty()) return hasAccessAtForum(caller, right, forumId);
    }
    if (!right.page.empty()) {
        const PageIdentity page = identify(caller.connection, values.text(right.page));
        return page.isValid() && mayUseEntry(caller.connection, caller.actor, right.detail, right.advId,
                                             siteOf(page.nodeId), langOf(page.nodeId));
    }
    return mayUseEntry(caller.connection, caller.actor, right.detail, entryOf(right, values),
                       values.text(right.site), values.text(right.lang));
}

bool hasOtherAccess(const Caller& caller, const Right& right) {
    return !right.orAccess.empty() &&
           mayUseEntry(caller.connection, caller.actor, right.orAccess, right.advId);
}

Verdict verdictFor(bool allowed) {
    return allowed ? Verdict() : noRight();
}

/// Of somebody who may ask.
Verdict judge(const Caller& caller, const Right& right, const CallValues& values, const std::string& name) {
    switch (right.kind) {
        case Right::Kind::Visitor:
        case Right::Kind::AnyLogin:
            return {};
        case Right::Kind::EditRight:
            return verdictFor(hasEditRight(caller, right, values) || hasOtherAccess(caller, right));
        case Right::Kind::AdvancedRight:
            return verdictFor(hasAccess(caller, right, values));
        case Right::Kind::OneselfOrAdvancedRight:
            return verdictFor(values.number(right.login) == caller.actor.loginId ||
                              hasAccess(caller, right, values));
        case Right::Kind::OnlySa:
            return verdictFor(caller.actor.isAdministrator());
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

std::string nameIn(const Operation& operation, const std::vector<Value>& values) {
    return CallValues(operation.arguments, values).text(operation.passwordTest->name);
}

/// Failures stand in the log and in the trail by what the operation does; here it is what follows from them.
void reportLockOut(HostContext& host, const std::string& name, std::chrono::seconds wait) {
    logLockOut(host, LoginAttempt::Kind::Author, name, wait);
    const std::string description = "Locked out for " + std::to_string(wait.count()) + " seconds - IP " +
                                    host.request.serverVariable("remote_addr") + " - username " +
                                    std::string(text::first(text::trim(name), 50));
    followUp(host.log, "audit of a lock-out", [&] {
        AuditLine line;
        line.action = "Access denied";
        line.description = description;
        writeAuditLine(host, line);
    });
}

}  // namespace

int entryFor(const Operation& operation, const std::vector<Value>& values) {
    return entryOf(operation.right, CallValues(operation.arguments, values));
}

Verdict Gate::mayAsk(const Right& right, const std::string& name) {
    if (right.kind == Right::Kind::Visitor) return {};
    if (right.kind == Right::Kind::Nobody) return outOfReach(name);
    const Actor actor = actorOf(host_);
    if (!ownsItsLogin(connection_, actor)) return notLoggedIn();
    return isEnrolment(name) || !mustEnrol(connection_, actor) ? Verdict() : notEnrolled();
}

Verdict Gate::mayCall(const Operation& operation, const std::vector<Value>& values,
                      const PropertyOf& property) {
    const Actor actor = actorOf(host_);
    const CallValues named(operation.arguments, values);
    const Verdict verdict = judge({connection_, actor}, operation.right, named, operation.name);
    if (!verdict.isAllowed()) return verdict;
    const auto& design = operation.right.design;
    if (design && !mayReadDesigns(connection_, actor, *design, named, property)) return noRight();
    if (const auto* name = withheldIn(operation, values)) return withheld(*name);
    if (!operation.passwordTest || !isTyped(values)) return {};
    attempt_.emplace(throttle_, LoginAttempt::Kind::Author, host_.request.serverVariable("remote_addr"),
                     nameIn(operation, values));
    const auto wait = attempt_->begin();
    if (wait.count() == 0) return {};
    logEarlyTry(host_);
    return tooManyTries(wait);
}

Verdict Gate::mayUse(const Property& property) {
    const Verdict verdict = mayAsk(property.right, property.name);
    if (!verdict.isAllowed()) return verdict;
    return judge({connection_, actorOf(host_)}, property.right, CallValues({}, {}), property.name);
}

void Gate::called(const Operation& operation, const std::vector<Value>& values, const Value& result) {
    if (!operation.passwordTest || !isTyped(values)) return;
    if (result == operation.passwordTest->passed) return attempt_->succeeded();
    if (result != operation.passwordTest->failed) return attempt_->takeBack();
    if (const auto wait = attempt_->waitAfterwards(); wait.count() > 0)
        reportLockOut(host_, nameIn(operation, values), wait);
}

}  // namespace torvex::operations
