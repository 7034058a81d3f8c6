#include "operations/calls/Batch.h"

#include <istream>
#include <ostream>
#include <sodium.h>

#include "installation/Setup.h"
#include "operations/calls/BatchLogin.h"
#include "operations/calls/CallRun.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Session.h"
#include "platform/text/Hexadecimal.h"

namespace torvex::operations {

/// One visitor, whose session is made by the first request and again by the first one after it was abandoned.
struct BatchEngine::Visitor {
    std::mutex running;
    std::optional<Session> session;
};

namespace {

/// Unlike that of any session elsewhere: logins are held by it.
std::string newSessionId() {
    return randomName(16);
}

BatchFailure failureOf(const std::exception& error, std::optional<std::size_t> step) {
    const auto* known = dynamic_cast<const Error*>(&error);
    return {known ? known->number() : operationErrorNumber, error.what(), step};
}

void startSession(std::optional<Session>& session, HostContext& host) try {
    Setup(host).initSession();
} catch (...) {
    session.reset();
    throw;
}

void store(const BatchRequest& request, HostContext& host) {
    for (const auto& [key, value] : request.session) host.session.set(key, value);
    for (const auto& [key, value] : request.application) host.application.set(key, value);
}

/// Runs a step of the owner's, whatever its kind.
struct StepRun {
    Value operator()(const SessionRead& step) { return host.session.get(step.key); }
    Value operator()(const ApplicationRead& step) { return host.application.get(step.key); }
    Value operator()(const auto& call) { return calls.run(call).result; }

    HostContext& host;
    CallRun calls;
};

void runSteps(const Register& classes, HostContext& host, const BatchRequest& request, BatchAnswer& answer) {
    StepRun run{host, CallRun(classes, host, CommandLine{})};
    for (const auto& step : request.steps) {
        try {
            answer.results.push_back(std::visit(run, step));
        } catch (const ResponseEnded&) {
            answer.ended = true;
            return;
        } catch (const std::exception& error) {
            answer.failure = failureOf(error, answer.results.size());
            return;
        }
    }
}

}  // namespace

BatchEngine::BatchEngine(const Register& classes, const Services& services)
    : classes_(classes), services_(services) {
    if (sodium_init() < 0) throw Error("the source of random numbers is missing");
}

BatchEngine::~BatchEngine() = default;

BatchEngine::Visitor& BatchEngine::visitorNamed(const std::string& name) {
    const std::scoped_lock guard(mutex_);
    auto& visitor = visitors_[name];
    if (!visitor) visitor = std::make_unique<Visitor>();
    return *visitor;
}

std::string BatchEngine::run(const std::string& line) {
    BatchAnswer answer;
    try {
        answer = run(parseBatchRequest(line));
    } catch (const std::exception& error) {
        answer.failure = failureOf(error, std::nullopt);
    }
    return toJson(answer);
}

BatchAnswer BatchEngine::run(const BatchRequest& request) {
    BatchAnswer answer;
    Visitor& visitor = visitorNamed(request.visitor);
    const std::scoped_lock oneAtATime(visitor.running);
    try {
        runFor(visitor, request, answer);
    } catch (const std::exception& error) {
        answer.failure = failureOf(error, std::nullopt);
    }
    return answer;
}

void BatchEngine::runFor(Visitor& visitor, const BatchRequest& request, BatchAnswer& answer) {
    const FixedClock stopped(request.now.value_or(DateTime{}));
    const Clock& clock = request.now ? stopped : services_.clock;
    Request asked(request.query, request.form, request.serverVariables);
    const bool isNew = !visitor.session;
    if (isNew) visitor.session.emplace(newSessionId());
    HostContext host{services_.with(clock), asked, answer.response, *visitor.session};
    if (isNew) startSession(visitor.session, host);
    if (request.login) holdLogin(host, *request.login);
    store(request, host);
    runSteps(classes_, host, request, answer);
    answer.abandoned = visitor.session->isAbandoned();
    if (answer.abandoned) visitor.session.reset();
}

void runBatch(BatchEngine& engine, std::istream& in, std::ostream& out) {
    std::string line;
    while (std::getline(in, line)) out << engine.run(line) << '\n' << std::flush;
}

}  // namespace torvex::operations
