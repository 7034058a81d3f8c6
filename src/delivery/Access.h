#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "records/Groups.h"
#include "records/PageIdentity.h"

namespace torvex {
struct HostContext;

/// Whether the pages of the site have groups at all.
bool hasExtranet(const HostContext& host);

/// Who asks for a page.
struct Visitor {
    std::string username;
    std::string password;
};

/// As the session holds it; nobody while she has still to show a second factor that is demanded.
Visitor visitorOf(const HostContext& host);

/// The groups that the visitor belongs to today (yyyymmdd); none of a user outside her dates.
std::set<double> groupsOfVisitor(db::Connection& connection, const Visitor& visitor, std::string_view today);

/// The page whose own groups decide on a page, and the lowest of them. A page that inherits its groups is
/// decided by the nearest ancestor that has some of its own.
struct DecidingGroup {
    PageId pageId;
    double group;

    bool isReal() const { return group > everybodyGroup; }
};

/// Nothing when a page on the way has no groups at all.
std::optional<DecidingGroup> decidingGroup(db::Connection& connection, PageId pageId,
                                           std::string_view nodeId);

/// The verdict (one of `pageAccess`) of a page's groups on a visitor. `today` is yyyymmdd.
int groupVerdict(db::Connection& connection, PageId pageId, std::string_view nodeId, const Visitor& visitor,
                 std::string_view today);

/// The verdict on a page without its online dates, for a user, or without a name for the session's. Folders
/// are followed to their first child, and the groups of every page on the way are asked.
bool mayEnter(HostContext& host, db::Connection& connection, const PageIdentity& page,
              const std::string& username = "");

/// Whether a real group guards the page, on a site that has groups.
bool isSecured(db::Connection& connection, const PageIdentity& page);

/// The login page of the page whose groups decide on this one: -1 when it names none, 0 when it isn't live.
PageId loginPageOf(db::Connection& connection, PageIdentity page);

}  // namespace torvex
