#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

namespace torvex {
struct HostContext;

/// What the removals of all four registers answer; why an entry stays is a code of each register's own.
namespace removalStatus {
inline constexpr std::string_view removed = "0";
inline constexpr std::string_view missing = "2";
inline constexpr std::string_view usedByPage = "3";
inline constexpr std::string_view usedByNewsflash = "4";
inline constexpr std::string_view usedByMenu = "5";
inline constexpr std::string_view templateLocked = "6";
inline constexpr std::string_view locked = "4";  ///< of the other registers
inline constexpr std::string_view failed = "-1";
}  // namespace removalStatus

/// A look for what uses an entry.
struct AssetUse {
    std::string_view statement;  ///< finds a row when something does; takes the entry's number
    std::string_view status;     ///< why it stays then
};

/// A register, as a removal sees it.
struct RemovableAsset {
    std::string_view operation;    ///< for operators
    std::string_view word;         ///< "Content template": of the audit trail
    std::string_view lockItem;     ///< of the item locks
    std::string_view locked;       ///< the status when another session holds it
    std::string_view selectEntry;  ///< site, lang, name and filename of a number
    std::string_view deleteEntry;
    std::string_view
        directoryKey;  ///< the application value of the files' folder; "" for entries without one
    std::span<const AssetUse> uses;
};

/// Removes an entry with its file, unless something uses it or another session holds it: a status. The tests
/// are made in order. An entry whose file is missing goes; a file that can't be removed keeps its entry.
/// A failure changes nothing and is told to operators. `advId` above 0 leaves a line in the trail.
std::string removeAsset(HostContext& host, const RemovableAsset& asset, int id, int advId);

}  // namespace torvex
