#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "accounts/GuessThrottle.h"
#include "operations/register/Register.h"
#include "pages/PageRoute.h"
#include "pages/api/Call.h"
#include "pages/api/OpenApi.h"
#include "pages/api/Rates.h"
#include "pages/api/Words.h"

namespace torvex::api {

inline constexpr std::string_view folder = "/torvex/api/";

/// What all requests to the interface for programs share, for the server's life. Safe to share between threads.
struct Api {
    explicit Api(std::shared_ptr<GuessThrottle> shared,
                 operations::Register known = operations::makeRegister())
        : throttle(std::move(shared)), classes(std::move(known)) {}

    std::shared_ptr<GuessThrottle> throttle;  ///< with the form by which visitors log in
    const operations::Register classes;
    Words words;
    Rates rates;
    Rate ofSessions = rate::ofSessions;
    Rate ofTokens = rate::ofTokens;

    Shared shared() { return {classes, *throttle, words}; }
    /// By OpenAPI; a megabyte, made when it is first asked for.
    const std::string& description() const {
        std::call_once(isDescribed_, [this] { description_ = openApi(classes); });
        return description_;
    }

  private:
    mutable std::once_flag isDescribed_;
    mutable std::string description_;
};

/// The addresses below /torvex/api/.
std::vector<PageRoute> routes(const std::shared_ptr<Api>& api);

/// What the host and failures say there, for further addresses.
RefusalHandler refusals(const std::shared_ptr<Api>& api);

/// A further address below /torvex/api/, "uploads": it takes JSON and programs' tokens, is counted among the calls of
/// who asks, and refuses in problems. The session of `answer` is the program's where a token was shown.
PageRoute route(const std::shared_ptr<Api>& api, std::string_view path, void (*answer)(HostContext&, Api&),
                MethodSet methods);

/// Counts the request among those of its caller. True when it came too fast, and is answered.
bool isTooFast(HostContext& host, Api& api);

// For further addresses, each on a worker thread.

/// Whether a request that isn't just reading was made by a document of ours, by its token and by what the browser
/// says of its origin, or by a program.
bool isFromOwnDocument(const HostContext& host);

/// Refuses the token that came.
void answerBadToken(HostContext& host, Api& api);

/// The problem in the language of whoever asks.
Problem problemFor(const HostContext& host, const Api& api, const ProblemKind& kind,
                   std::initializer_list<Place> places = {});

}  // namespace torvex::api
