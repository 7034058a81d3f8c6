#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace torvex {
namespace db {
class Connection;
}
struct HostContext;

/// A language of the interface that is switched on.
struct InterfaceLanguage {
    std::string code;
    std::string name;  ///< in itself: "Deutsch"
};

/// All of them, the fallback of the others first.
std::vector<InterfaceLanguage> interfaceLanguages(db::Connection& connection);

/// The code of the one that `asked` names; "" for anything else.
std::string knownCode(const std::vector<InterfaceLanguage>& languages, std::string_view asked);

/// The one of `languages` that somebody wants who isn't logged in: `chosen`, or what her browser asks for, or
/// the first. "en" when there is none at all.
std::string languageFor(const HostContext& host, const std::vector<InterfaceLanguage>& languages,
                        std::string_view chosen);

/// The one that a page of the server's own speaks: the session's for whoever is logged in, else as
/// `languageFor` says.
std::string presentLanguage(const HostContext& host, db::Connection& connection);

}  // namespace torvex
