#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "operations/register/Register.h"
#include "pages/PageRoute.h"
#include "platform/Session.h"

namespace torvex {
struct HostContext;
}

namespace torvex::api {

/// What a program's token allows; a request that came with one has it in its session.
struct TokenScope final : SessionObject {
    TokenScope(int id, std::string covered) : tokenId(id), operations(std::move(covered)) {}

    int tokenId;
    std::string operations;
};

/// Null for browsers.
std::shared_ptr<const TokenScope> tokenScope(const Session& session);

/// Answers a request in the session of whoever calls: a program, which says by a token who it is, has one of its own
/// for this request alone. False when the token isn't valid; then nothing is answered.
bool answerInOwnSession(HostContext& host, const PageHandler& answer);

/// Whether the caller's token, if she has one, covers it.
bool isCovered(const Session& session, std::string_view className, const operations::Operation& operation);
/// Whether it covers all that leaves nothing behind; true without one.
bool coversReading(const Session& session);
/// The same as the first for properties of a class.
bool isCovered(const Session& session, std::string_view className);

}  // namespace torvex::api
