#pragma once

#include <span>
#include <string_view>

namespace torvex {

/// When the rows of a page go, of those that go with it: what hangs on the pages first, the pages last.
enum class PageTurn { Groups, Bodies, Hits, MetaData, MailForm, Search, DynamicMenu, Pages };

/// A table of the schema, as the room that owns it lists it: by which of its columns rows belong to a site, a
/// language, a login or a page, and go with it. "" where none goes: there is nothing of the kind in the table,
/// or it stays on purpose, which the list then says.
///
/// Each room has one list, in its Tables.h, and every table of the schema stands in exactly one. Removals ask
/// all of them (authoring/OwnedRows.h).
struct OwnedTable {
    std::string_view name;
    std::string_view site = {};
    std::string_view lang = {};
    std::string_view login = {};
    std::string_view page = {};  ///< holds the page's number
    std::string_view node = {};  ///< holds its node
    PageTurn turn = PageTurn::Pages;
    /// Columns that point at a page and are no reason for the row to go: they point at none (-1) then.
    std::span<const std::string_view> pagePointers = {};
    /// Statements, without values, for what hung on rows of this table: after those that went with a site or
    /// a language.
    std::span<const std::string_view> orphans = {};
};

/// What the program itself keeps.
std::span<const OwnedTable> installationTables();

}  // namespace torvex
