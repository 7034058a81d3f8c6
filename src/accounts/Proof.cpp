#include "accounts/Proof.h"

#include "accounts/StoredPassword.h"
#include "platform/db/Connection.h"

namespace torvex {

namespace {

/// The row if it has this old form, or a hash that is still to be asked.
constexpr std::string_view selectStored =
    "select password, passwordHash from TORVEX_LOGINS where username = ? and (password = ? or password like "
    "?) order by loginId";

constexpr std::string_view selectStrong =
    "select loginId from TORVEX_LOGINS where username = ? and password like ?";

struct Stored {
    std::string password;
    std::string hash;
};

std::optional<Stored> readStored(db::Connection& connection, const std::string& username,
                                 const std::string& encoded) {
    auto rows = connection.query(selectStored, {username, encoded, anyStrongMark});
    if (!rows.next()) return std::nullopt;
    return Stored{rows.text("password"), rows.text("passwordHash")};
}

}  // namespace

std::optional<Proof> proofOf(db::Connection& connection, PasswordStore store, const std::string& username,
                             std::string_view password) {
    const auto stored = readStored(connection, username, encodePassword(password));
    if (stored && isStrongMark(stored->password)) {
        if (!isPasswordOf(stored->hash, password)) return std::nullopt;
        return Proof{username, stored->password, std::nullopt};
    }
    std::optional<StrongForm> renewal;
    // Made in vain, too: a wrong name must not be told from a wrong password by the time it takes.
    if (store == PasswordStore::Strong) renewal = makeStrongForm(password);
    if (!stored) return std::nullopt;
    return Proof{username, stored->password, std::move(renewal)};
}

bool hasStrongForm(db::Connection& connection, const std::string& username) {
    return connection.query(selectStrong, {username, anyStrongMark}).next();
}

}  // namespace torvex
