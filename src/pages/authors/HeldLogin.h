#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace torvex {
namespace db {
class Connection;
}
struct DateTime;
struct HostContext;

// Somebody has shown to know a login's password, but a session at another address has the login. She is asked
// whether that one is to end; what she typed is kept meanwhile, in the memory of her session alone and for two
// minutes at most, so that her answer is one click.

struct TypedLogin {
    std::string username;
    std::string password;
};

void keepTyped(HostContext& host, TypedLogin typed);
/// What is kept, which then is no more; nothing when it is too old.
std::optional<TypedLogin> takeTyped(HostContext& host);

/// From where somebody has a login, and since when: as people read it, "" what isn't known.
struct LoginHolder {
    std::string address{};
    std::string since{};  ///< "9:12", or "2026-06-14 9:12" when that isn't today
};
LoginHolder holderOf(db::Connection& connection, std::string_view username, const DateTime& now);

/// The question: who has the login, from where and since when.
std::string holderSentence(HostContext& host, db::Connection& connection, std::string_view language,
                           std::string_view username);

}  // namespace torvex
