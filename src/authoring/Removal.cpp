#include "authoring/Removal.h"

#include <string>

#include "platform/db/Connection.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

// Which pages: those whose node begins with that of the page. It is asked for as a range, which an index
// serves. A level of a node always has two digits, so that nothing else begins like that but what lies below.

/// Nobody may publish, check out or move any of them any more until this is over.
constexpr std::string_view takeBranch =
    "update TORVEX_PAGES_DESIGN set approveStatus = approveStatus where nodeId >= ? and nodeId < ?";

constexpr std::string_view statements[] = {
    "delete from TORVEX_PAGES_GROUPS_DESIGN where pageId in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",
    "delete from TORVEX_PAGES_GROUPS_LIVE where pageId in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",

    "delete from TORVEX_BODIES_DESIGN where pageId in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",
    "delete from TORVEX_BODIES_LIVE where pageId in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",

    "delete from TORVEX_LOGGING where nodeId >= ? and nodeId < ?",

    "delete from TORVEX_PAGES_METADATA_DESIGN where metaData_pageId in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",
    "delete from TORVEX_PAGES_METADATA_LIVE where metaData_pageId in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",

    "delete from TORVEX_MAILFORM where pageId in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",
    "delete from TORVEX_MAILFORM_OPTIONS where pageId in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",

    "delete from TORVEX_SEARCH where search_pageId in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",
    "delete from TORVEX_SEARCH_LOG where search_pageId in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",

    "delete from TORVEX_DYNMENU_DESIGN where pageId in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",
    "delete from TORVEX_DYNMENU_LIVE where pageId in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",

    "update TORVEX_PAGES_DESIGN set previous = -1 where previous in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",
    "update TORVEX_PAGES_LIVE set previous = -1 where previous in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",
    "update TORVEX_PAGES_DESIGN set next = -1 where next in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",
    "update TORVEX_PAGES_LIVE set next = -1 where next in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",
    "update TORVEX_PAGES_DESIGN set up = -1 where up in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",
    "update TORVEX_PAGES_LIVE set up = -1 where up in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",
    "update TORVEX_PAGES_DESIGN set loginPage = -1 where loginPage in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",
    "update TORVEX_PAGES_LIVE set loginPage = -1 where loginPage in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",

    "update TORVEX_USERGROUPS set entryPage = -1 where entryPage in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",
    "update TORVEX_USERGROUPS set exitPage = -1 where exitPage in "
    "(select pageId from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?)",

    "delete from TORVEX_PAGES_DESIGN where nodeId >= ? and nodeId < ?",
    "delete from TORVEX_PAGES_LIVE where nodeId >= ? and nodeId < ?",
};

}  // namespace

void removeBranch(db::Connection& connection, std::string_view nodeId) {
    const std::string end = endOfPrefix(nodeId);
    connection.execute(takeBranch, {nodeId, end});
    for (const std::string_view statement : statements) connection.execute(statement, {nodeId, end});
}

}  // namespace torvex
