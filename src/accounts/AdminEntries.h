#pragma once

/// The entries of the administration menu, by the numbers of their fixed rows in TORVEX_ADVANCED.
namespace torvex::adminEntry {

// For the whole installation
inline constexpr int sites = 11;
inline constexpr int languages = 12;
inline constexpr int logins = 21;
inline constexpr int roles = 22;
inline constexpr int loginsOnline = 23;
inline constexpr int groups = 31;
inline constexpr int users = 32;
inline constexpr int applications = 40;
inline constexpr int interfaceLanguages = 51;
inline constexpr int vocabulary = 52;
inline constexpr int settings = 61;
inline constexpr int servers = 62;
inline constexpr int auditTrail = 63;
inline constexpr int catalogue = 64;

// For a site
inline constexpr int images = 111;
inline constexpr int documents = 112;
inline constexpr int metadata = 120;

// For a site and language
inline constexpr int websiteTitle = 211;
inline constexpr int locks = 212;
inline constexpr int statistics = 213;
inline constexpr int templates = 221;
inline constexpr int baseTemplates = 222;
inline constexpr int stylesheets = 223;
inline constexpr int htmlFeeds = 231;
inline constexpr int xmlFeeds = 232;
inline constexpr int messageBoard = 241;
inline constexpr int newsflash = 242;
inline constexpr int forum = 243;
inline constexpr int dynamicMenu = 244;
inline constexpr int search = 245;

}  // namespace torvex::adminEntry
