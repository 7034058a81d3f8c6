#include "cli/CallCommand.h"

#include <ostream>

#include "cli/CallTable.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"

namespace torvex::cli {

namespace {

operations::Call callOf(const CallOptions& options) {
    const auto dot = options.target.find('.');
    if (dot == std::string::npos)
        throw Error("an operation is named as CLASS.OPERATION, not " + options.target);
    operations::Call call{options.target.substr(0, dot), options.target.substr(dot + 1), {}};
    for (const auto& argument : options.arguments) {
        const auto equals = argument.find('=');
        if (equals == std::string::npos) throw Error("an argument is given as name=value, not " + argument);
        call.arguments.emplace_back(argument.substr(0, equals), argument.substr(equals + 1));
    }
    return call;
}

operations::BatchRequest requestOf(const CallOptions& options) {
    operations::BatchRequest request;
    if (!options.login.empty()) request.login = options.login;
    request.steps.emplace_back(callOf(options));
    return request;
}

void print(const Value& result, std::ostream& out) {
    if (result.isGrid()) {
        out << alignedTable(result.grid());
    } else if (!result.isEmpty()) {
        out << result.toText() << '\n';
    }
}

void print(const operations::BatchAnswer& answer, bool json, std::ostream& out) {
    if (json) {
        out << operations::toJson(answer) << '\n';
        return;
    }
    for (const auto& result : answer.results) print(result, out);
    if (!answer.response.body().empty()) out << answer.response.body() << '\n';
}

/// The chain of an error has one line for each operation that it passed.
void complain(const std::string& description, std::ostream& err) {
    err << text::replaceAll(description, "\r\n", "\n") << '\n';
}

}  // namespace

int runCall(operations::BatchEngine& engine, const CallOptions& options, std::ostream& out,
            std::ostream& err) try {
    const auto answer = engine.run(requestOf(options));
    print(answer, options.json, out);
    out.flush();
    if (!answer.failure) return 0;
    complain(answer.failure->description, err);
    return 1;
} catch (const Error& error) {
    complain(error.what(), err);
    return 1;
}

}  // namespace torvex::cli
