#include "pages/Token.h"

#include <sodium.h>

#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/text/RandomSecret.h"

namespace torvex::pageToken {

namespace {

/// Apart from the values of a session, which templates and operations can name.
struct Keys {
    std::string_view token;
    std::string_view login;
};

constexpr Keys keysOf(Side side) {
    if (side == Side::Visitors) return {"torvex_visitor_token", sessionKey::visitorName};
    return {"torvex_page_token", sessionKey::authorName};
}

struct Kept final : SessionObject {
    Kept(std::string made, std::string owner) : token(std::move(made)), login(std::move(owner)) {}

    std::string token;
    std::string login;
};

std::shared_ptr<const Kept> keptBy(const Session& session, Keys keys) {
    auto kept = std::dynamic_pointer_cast<const Kept>(session.object(keys.token));
    return kept && kept->login == session.text(keys.login) ? kept : nullptr;
}

}  // namespace

std::string of(Session& session, Side side) {
    const Keys keys = keysOf(side);
    if (const auto kept = keptBy(session, keys)) return kept->token;
    auto made = std::make_shared<Kept>(randomSecret(), session.text(keys.login));
    session.setObject(keys.token, made);
    return made->token;
}

bool isOf(const Session& session, std::string_view token, Side side) {
    const auto kept = keptBy(session, keysOf(side));
    return kept && kept->token.size() == token.size() &&
           sodium_memcmp(kept->token.data(), token.data(), token.size()) == 0;
}

void renew(Session& session) {
    session.setObject(keysOf(Side::Authors).token, nullptr);
}

}  // namespace torvex::pageToken
