#include "pages/authors/Token.h"

#include <sodium.h>

#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/text/RandomSecret.h"

namespace torvex::pageToken {

namespace {

/// Apart from the values of a session, which templates and operations can name.
constexpr std::string_view key = "torvex_page_token";

struct Kept final : SessionObject {
    Kept(std::string made, std::string owner) : token(std::move(made)), login(std::move(owner)) {}

    std::string token;
    std::string login;
};

std::string loginOf(const Session& session) {
    return session.text(sessionKey::authorName);
}

std::shared_ptr<const Kept> keptBy(const Session& session) {
    auto kept = std::dynamic_pointer_cast<const Kept>(session.object(key));
    return kept && kept->login == loginOf(session) ? kept : nullptr;
}

}  // namespace

std::string of(Session& session) {
    if (const auto kept = keptBy(session)) return kept->token;
    auto made = std::make_shared<Kept>(randomSecret(), loginOf(session));
    session.setObject(key, made);
    return made->token;
}

bool isOf(const Session& session, std::string_view token) {
    const auto kept = keptBy(session);
    return kept && kept->token.size() == token.size() &&
           sodium_memcmp(kept->token.data(), token.data(), token.size()) == 0;
}

void renew(Session& session) {
    session.setObject(key, nullptr);
}

}  // namespace torvex::pageToken
