#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace torvex {
struct HostContext;
namespace db {
class Connection;
}

// The second factors of visitors: SecondFactor.h, where the installation's setting allows them. Accounts, groups and
// sessions are those of the whole installation, so that is one setting for all its sites: a site that asked for less would
// be the way around all others.

/// The name of the setting.
inline constexpr std::string_view visitorFactorSetting = "torvex_extranet_secondFactor";

enum class VisitorFactors {
    Off,      ///< nobody is asked for one
    Offered,  ///< who has set one up is asked for it
    Demanded  ///< who has none has to set one up before she is logged in
};
/// "off" or nothing, "offered", and for everything else `Demanded`: a mistyped word opens no door.
VisitorFactors visitorFactors(const HostContext& host);

/// Whether the visitor whom the session names is logged in for what is guarded: not while a factor is demanded that she
/// hasn't shown in this session.
bool countsAsLoggedIn(const HostContext& host);
/// The session's visitor has shown a factor.
void setFactorShown(HostContext& host);

/// An account as a session knows it.
struct VisitorIdentity {
    int userId = 0;
    std::string username;
    std::string stored;  ///< what the row holds in the password's place
};
/// Whether there still is such an account with that password.
bool isStill(db::Connection& connection, const VisitorIdentity& visitor);

// What a visitor does with a factor of hers. Each in a transaction of its own.

enum class FactorChange {
    Done,
    Wrong,  ///< the code, or the password
    Impossible,  ///< there is none, or there is one already; nothing was begun, or too long ago; the account has changed
    IsDemanded
};

/// Gives her the factor that was begun in this session (BegunFactor.h), and tells the recovery codes.
FactorChange enrolVisitor(HostContext& host, const VisitorIdentity& visitor, std::string_view code,
                          std::vector<std::string>& codes);
/// New recovery codes, by a code of the telephone.
FactorChange renewVisitorCodes(HostContext& host, const VisitorIdentity& visitor, std::string_view code,
                               std::vector<std::string>& codes);
/// By the password, a code of the telephone or one on paper.
FactorChange dropVisitorFactor(HostContext& host, const VisitorIdentity& visitor, std::string_view proof);

}  // namespace torvex
