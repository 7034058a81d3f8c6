#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "records/PageId.h"

namespace torvex {
struct Actor;
namespace db {
class Connection;
}

/// What publishing looks at of a page's design row.
struct DesignPage {
    PageId pageId = 0;
    std::string nodeId;
    std::string type;
    std::string title;
    std::string onlineFrom;
    std::string onlineTo;
    int lockStatus = 0;
    int deleteStatus = 0;
    int approveStatus = 0;

    bool isFolder() const;
    /// Of a system branch, by the digits anywhere in its node.
    bool isSystem() const;
    /// Without a date there is no limit on its side.
    bool isWithinDates(std::string_view day) const;
};

// The steps from the design tables to the live ones. All of them work within a transaction of the caller, who
// has taken the page by the first.

/// Takes the page's design row for the transaction and reads it: whoever else wants to change it, or to
/// publish it, waits for the transaction's end and then sees what has become of it. Nothing when there is no
/// such page.
std::optional<DesignPage> takeDesignPage(db::Connection& connection, PageId pageId);

bool isLive(db::Connection& connection, PageId pageId);
/// Whether there is a live page to hang this node on; a root needs none.
bool hasLiveParent(db::Connection& connection, std::string_view nodeId);

/// Adds the live row with its place in the tree, online ...
void addLivePageOnline(db::Connection& connection, PageId pageId);
/// ... or in the state that the table gives a new row.
void addLivePage(db::Connection& connection, PageId pageId);
/// Everything of the row but its place in the tree and whether it is online.
void copyPage(db::Connection& connection, PageId pageId, const Actor& publisher);
int liveOnline(db::Connection& connection, PageId pageId);
void setLiveOffline(db::Connection& connection, PageId pageId);

/// The design equals the live page from here on; the record of who approved it stays.
void markPublished(db::Connection& connection, PageId pageId);

/// Groups, bodies and meta data, in place of those that are live.
void copyContent(db::Connection& connection, PageId pageId);

}  // namespace torvex
