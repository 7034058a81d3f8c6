#pragma once

/// The words of the interface that the program itself says, by their numbers in the vocabulary
/// (install/rows/05_vocabulary.sql).
namespace torvex::label {

inline constexpr double editButton = 7;
inline constexpr double copyButton = 19;
inline constexpr double pageNotFound = 670;
inline constexpr double documentNotFound = 671;
inline constexpr double pageOffline = 672;
inline constexpr double linkUnchosen = 673;  ///< a link to nothing yet
inline constexpr double newFolder = 1212;
inline constexpr double unknownLogin = 2560;  ///< in place of the name of a login or user that is gone
inline constexpr double copyOf = 2581;        ///< in the title of a copy
inline constexpr double fileMissing = 2584;
inline constexpr double linksDisabled = 2587;
inline constexpr double untitled = 2597;  ///< in place of a title
inline constexpr double january = 2821;   ///< the other months follow, up to 2832
inline constexpr double setupButton = 3061;

}  // namespace torvex::label
