#include "accounts/Proof.h"

#include "accounts/StoredPassword.h"
#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

/// The row if it has this old form, or a hash that is still to be asked. Programs have tokens in place of
/// passwords.
constexpr std::string_view selectStored =
    "select password, passwordHash from TORVEX_LOGINS where username = ? and (password = ? or password like "
    "?) and coalesce(kind, '') <> 'program' order by loginId";

constexpr std::string_view selectStrong =
    "select loginId from TORVEX_LOGINS where username = ? and password like ?";

constexpr std::string_view updatePassword =
    "update TORVEX_LOGINS set password = ?, passwordHash = ? where username = ?";

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

PasswordStore passwordStoreOf(const HostContext& host) {
    const std::string setting = host.application.text(applicationKey::passwordStore);
    return text::equals(text::trim(setting), strongStore) ? PasswordStore::Strong : PasswordStore::Given;
}

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

void givePassword(db::Connection& connection, PasswordStore store, std::string_view username,
                  std::string_view password) {
    if (store == PasswordStore::Given) {
        connection.execute(updatePassword, {encodePassword(password), nullptr, username});
        return;
    }
    const StrongForm form = makeStrongForm(password);
    connection.execute(updatePassword, {form.mark, form.hash, username});
}

bool hasStrongForm(db::Connection& connection, const std::string& username) {
    return connection.query(selectStrong, {username, anyStrongMark}).next();
}

}  // namespace torvex
