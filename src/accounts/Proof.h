#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "accounts/StrongPassword.h"

namespace torvex {
struct HostContext;
namespace db {
class Connection;
}

/// What somebody who wants to log in has shown to know.
struct Proof {
    std::string username;
    std::string password;               ///< as the row must still hold it when the login is taken
    std::optional<StrongForm> renewal;  ///< takes the place of the row's old form if the login succeeds
};

/// How passwords of authors and visitors are kept: in the form that the stored data has, or as a strong hash
/// (the setting `torvex_password_store` is "strong"). A row that has a hash is verified by it in both.
enum class PasswordStore { Given, Strong };

/// What the setting is for `PasswordStore::Strong`.
inline constexpr std::string_view strongStore = "strong";

/// The installation's.
PasswordStore passwordStoreOf(const HostContext& host);

/// Checks a typed password against the login's row; nothing if there is no such login or the password is
/// wrong. With the strong store each call takes the same time, whether the name is known, the row has a hash
/// or the password is right.
std::optional<Proof> proofOf(db::Connection& connection, PasswordStore store, const std::string& username,
                             std::string_view password);

/// Gives a login a password, in the form that the store wants.
void givePassword(db::Connection& connection, PasswordStore store, std::string_view username,
                  std::string_view password);

/// Whether the row of a login has a hash by now.
bool hasStrongForm(db::Connection& connection, const std::string& username);

}  // namespace torvex
