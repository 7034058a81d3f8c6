#pragma once

#include <string_view>

namespace torvex {

/// What a page is, by the letter in its column `type`.
enum class PageKind {
    Page,          ///< "P": has a content of its own, in bodies
    Application,   ///< "A": stands for a program; a visitor is sent to its address
    Folder,        ///< "F": leads to its first child and is never on line itself
    SystemBranch,  ///< "S": only asked for, of a new page; stored as a folder
    Unknown,
};

/// The letter may stand in either case and with blanks around it.
PageKind kindOf(std::string_view type);
std::string_view letterOf(PageKind kind);

/// The letters of what a page may be made, and of what it may be made when it is there.
inline constexpr std::string_view kindsOfNewPages = "FAPS";
inline constexpr std::string_view kindsOfPages = "FAP";

inline bool isFolder(std::string_view type) {
    return kindOf(type) == PageKind::Folder;
}

// What each may.
inline bool hasBodies(PageKind kind) {
    return kind == PageKind::Page;
}
/// Links to the pages before, behind and above it; computed, or set by hand.
inline bool hasNavigation(PageKind kind) {
    return kind == PageKind::Page;
}
inline bool hasApplication(PageKind kind) {
    return kind == PageKind::Application;
}
/// May be left out of the breadcrumb: what only gives structure.
inline bool isStructure(PageKind kind) {
    return kind == PageKind::Folder || kind == PageKind::SystemBranch;
}

}  // namespace torvex
