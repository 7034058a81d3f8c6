#include <algorithm>
#include <array>

#include "operations/register/NeedLabels.h"
#include "pages/api/Answers.h"
#include "pages/api/Api.h"
#include "pages/api/BatchRequest.h"
#include "pages/api/Json.h"
#include "platform/HostContext.h"
#include "platform/Request.h"

namespace torvex::api {

namespace {

namespace json = boost::json;
using operations::ArgumentError;

/// After these nothing that follows would come out any better.
constexpr std::array endings{401, 412, 429, 500};

bool endsBatch(const Problem& problem) {
    return std::find(endings.begin(), endings.end(), problem.status) != endings.end();
}

/// Runs one call, whatever its kind.
class Run {
  public:
    explicit Run(Calls& calls) : calls_(calls) {}

    Reply operator()(const BatchCall& call) {
        on_ = &call.on;
        Reply reply = std::visit([this](const auto& what) { return run(what); }, call.what);
        const auto* result = std::get_if<json::value>(&reply);
        if (!result || !call.expects || isMet(*call.expects, *result)) return reply;
        Problem changed = calls_.problem(kind::changed);
        changed.operation = nameOf(call);
        changed.more["now"] = *result;
        return changed;
    }

  private:
    Reply run(const Do& what) {
        const auto* operation = calls_.find(*on_, what.operation);
        if (!operation) return calls_.problem(kind::notThere);
        operations::GivenValues values;
        try {
            values = argumentsOf(what.with);
        } catch (const ArgumentError& error) {
            Problem problem = calls_.notFitting(*operation, error);
            problem.operation = calls_.nameOf(*on_, what.operation);
            return problem;
        }
        return calls_.call(*on_, what.operation, values);
    }

    Reply run(const Get& what) { return calls_.read(*on_, what.property); }

    Reply run(const GetSome& what) {
        json::object all;
        for (const auto& property : what.properties) {
            Reply one = calls_.read(*on_, property);
            if (std::holds_alternative<Problem>(one)) return one;
            all[property] = std::move(std::get<json::value>(one));
        }
        return json::value(std::move(all));
    }

    Reply run(const GetAll&) { return calls_.readAll(*on_); }
    Reply run(const Set& what) { return calls_.write(*on_, what.property, what.to); }

    std::string nameOf(const BatchCall& call) const {
        if (const auto* what = std::get_if<Do>(&call.what)) return calls_.nameOf(call.on, what->operation);
        if (const auto* what = std::get_if<Get>(&call.what)) return call.on + '.' + what->property;
        return call.on;
    }

    Calls& calls_;
    const std::string* on_ = nullptr;
};

/// The batch comes to its end with this call.
Problem stopped(Problem problem, std::size_t call, json::array results) {
    problem.more["call"] = call;
    problem.more["results"] = std::move(results);
    return problem;
}

Reply runAll(Calls& calls, const std::vector<BatchCall>& batch) {
    json::array results;
    Run run(calls);
    for (const BatchCall& call : batch) {
        const std::size_t index = results.size();
        try {
            Reply reply = run(call);
            if (auto* result = std::get_if<json::value>(&reply)) {
                results.push_back(json::object{{"result", std::move(*result)}});
                continue;
            }
            Problem& problem = std::get<Problem>(reply);
            if (!call.goesOn || endsBatch(problem))
                return stopped(std::move(problem), index, std::move(results));
            results.push_back(json::object{{"problem", toJson(problem)}});
        } catch (CallFailure& failure) {
            failure.problem = stopped(std::move(failure.problem), index, std::move(results));
            throw;
        }
    }
    return json::value(std::move(results));
}

Problem unfitting(const Calls& calls, const BatchError& error) {
    Problem problem = calls.unfitting(error);
    if (error.call) return stopped(std::move(problem), *error.call, {});
    return problem;
}

bool needsLogin(const Calls& calls, const BatchCall& call) {
    const auto* what = std::get_if<Do>(&call.what);
    const auto* operation = what ? calls.find(call.on, what->operation) : nullptr;
    return !operation || operation->right.kind != operations::Right::Kind::Visitor;
}

bool needsLogin(const Calls& calls, const std::vector<BatchCall>& batch) {
    return std::any_of(batch.begin(), batch.end(),
                       [&calls](const BatchCall& call) { return needsLogin(calls, call); });
}

Reply replyTo(const HostContext& host, Calls& calls) {
    const auto read = readJsonObject(host.request.body());
    const auto* fault = std::get_if<JsonFault>(&read);
    if (fault && *fault == JsonFault::NotJson) return calls.problem(kind::notUnderstood);
    try {
        if (fault) throw BatchError("a number is too large", "calls", operations::need::smallerNumber);
        const auto batch = callsOf(std::get<json::object>(read));
        if (!isFromOwnDocument(host)) return calls.foreign(needsLogin(calls, batch));
        if (batch.size() > mostCalls)
            return calls.problem(kind::tooManyCalls, {{"most", std::to_string(mostCalls)}});
        return runAll(calls, batch);
    } catch (const BatchError& error) {
        if (!isFromOwnDocument(host)) return calls.foreign(true);
        return unfitting(calls, error);
    }
}

}  // namespace

void answerBatch(HostContext& host, Api& api) {
    const Shared shared = api.shared();
    Calls calls(shared, host, languageOf(host, api.words));
    Reply reply = replyTo(host, calls);
    if (const auto* problem = std::get_if<Problem>(&reply)) return answer(host.response, *problem);
    answer(host.response, json::object{{"results", std::move(std::get<json::value>(reply))}});
}

}  // namespace torvex::api
