#include "desk/DesignReach.h"

#include "accounts/Actor.h"
#include "accounts/DesignRights.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view selectRoots =
    "select nodeId from TORVEX_PAGES_DESIGN where parent = '' order by nodeId";

}  // namespace

EditReach designReachOf(db::Connection& connection, const Actor& actor) {
    EditReach reach;
    reach.isEverywhere = actor.isAdministrator();
    if (reach.isEverywhere || !actor.isLoggedIn()) return reach;
    std::vector<std::string> roots;
    auto rows = connection.query(selectRoots);
    while (rows.next()) roots.push_back(text::lower(rows.view("nodeId")));
    for (std::string& root : roots) {
        if (mayReadDesign(connection, actor, siteOf(root), langOf(root)))
            reach.nodes.push_back(std::move(root));
    }
    return reach;
}

}  // namespace torvex
