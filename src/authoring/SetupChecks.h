#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "records/PageId.h"

namespace torvex {

struct PageBuffer;
namespace db {
class Connection;
}

/// Why the setup of a page is refused.
namespace setupCode {

inline constexpr std::string_view titleTaken = "-21";
inline constexpr std::string_view badType = "-22";
inline constexpr std::string_view badTemplate = "-23";
inline constexpr std::string_view badApplication = "-24";
inline constexpr std::string_view badBaseTemplate = "-25";
inline constexpr std::string_view badStylesheet = "-26";
inline constexpr std::string_view badPrevious = "-27";
inline constexpr std::string_view badNext = "-28";
inline constexpr std::string_view badUp = "-29";
inline constexpr std::string_view badLoginPage = "-30";
inline constexpr std::string_view badOnlineFrom = "-32";
inline constexpr std::string_view badOnlineTo = "-33";
inline constexpr std::string_view badSystemFolder = "-35";
inline constexpr std::string_view parentMissing = "-4";

}  // namespace setupCode

/// Where a page stands, or is going to stand.
struct SetupPlace {
    std::string site;
    std::string lang;
    std::string parent;            ///< its node; "" when there is none
    std::optional<PageId> itself;  ///< the page, which may keep its title; none before it is there
    bool isRoot = false;           ///< has nothing to inherit from
    std::string_view types;        ///< the letters of the types that it may have
};

/// Brings title and type into the form in which they are tested and stored.
void normaliseTitleAndType(PageBuffer& page);

/// Goes through the record in the order that callers know, brings each field into the form in which it is
/// stored, and tests it. The code of the first one that is wrong, "" when all are right; the record stays as
/// far as it was brought. Reads and writes nothing but the record. A look-up that fails has the line of the
/// operation that answers the same to callers outside.
std::string_view checkSetup(db::Connection& connection, PageBuffer& page, const SetupPlace& place);

/// Whether there is a website to put a page into.
bool websiteExists(db::Connection& connection, std::string_view site, std::string_view lang);

}  // namespace torvex
