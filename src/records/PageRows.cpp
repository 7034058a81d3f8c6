#include "records/PageRows.h"

#include "platform/db/Connection.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view selectLive = "select title, type from TORVEX_PAGES_LIVE where pageId = ?";
constexpr std::string_view selectDesign = "select title, type from TORVEX_PAGES_DESIGN where pageId = ?";

/// No page has a number of 0 or less, so that none is asked for by one.
template <typename Result, typename Read>
Result ofRow(db::Connection& connection, PageId pageId, Twin twin, Result ifNone, Read read) {
    if (!(pageId > 0)) return ifNone;
    auto rows = connection.query(twin == Twin::Design ? selectDesign : selectLive, {pageId});
    return rows.next() ? Result(read(rows)) : ifNone;
}

}  // namespace

bool isPage(db::Connection& connection, PageId pageId, Twin twin) {
    return ofRow(connection, pageId, twin, false, [](const db::Rows&) { return true; });
}

std::optional<std::string> titleOfPage(db::Connection& connection, PageId pageId, Twin twin) {
    return ofRow(connection, pageId, twin, std::optional<std::string>(),
                 [](const db::Rows& rows) { return rows.text("title"); });
}

std::string typeOfPage(db::Connection& connection, PageId pageId, Twin twin) {
    return ofRow(connection, pageId, twin, std::string(),
                 [](const db::Rows& rows) { return std::string(text::trim(rows.text("type"))); });
}

}  // namespace torvex
