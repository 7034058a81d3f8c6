// desk: a page's design beside what its visitors see.

#include <array>
#include <fmt/format.h>
#include <map>
#include <optional>

#include "desk/TwinBodies.h"
#include "desk/desk.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/TwinTables.h"

namespace torvex {

namespace {

// "_TWIN" stands for the tables of either twin.

constexpr std::string_view selectSetup =
    "select p.title, p.type, t.tpl_name as template, b.btpl_name as baseTemplate, s.ss_name as stylesheet, "
    "a.app_name as application, p.app_param_public as appParamPublic, p.app_param_admin as appParamAdmin, "
    "p.app_system_folder as appSystemFolder, f.title as appSystemFolderTitle, "
    "f.nodeId as appSystemFolderNode, p.navigation, "
    "p.previous, q.title as previousTitle, q.nodeId as previousNode, "
    "p.next, n.title as nextTitle, n.nodeId as nextNode, p.up, u.title as upTitle, u.nodeId as upNode, "
    "p.onlineFrom, p.onlineTo, p.breadcrumb, p.dynMenu, "
    "p.loginPage, l.title as loginPageTitle, l.nodeId as loginPageNode "
    "from TORVEX_PAGES_TWIN p "
    "left outer join TORVEX_TEMPLATES t on t.tpl_id = p.template "
    "left outer join TORVEX_BASETEMPLATES b on b.btpl_id = p.baseTemplate "
    "left outer join TORVEX_STYLESHEETS s on s.ss_id = p.stylesheet "
    "left outer join TORVEX_APPLICATIONS a on a.app_id = p.application "
    "left outer join TORVEX_PAGES_DESIGN f on f.pageId = p.app_system_folder "
    "left outer join TORVEX_PAGES_DESIGN q on q.pageId = p.previous "
    "left outer join TORVEX_PAGES_DESIGN n on n.pageId = p.next "
    "left outer join TORVEX_PAGES_DESIGN u on u.pageId = p.up "
    "left outer join TORVEX_PAGES_DESIGN l on l.pageId = p.loginPage "
    "where p.pageId = ?";
constexpr std::string_view selectGroups =
    "select distinct g.name from TORVEX_PAGES_GROUPS_TWIN p "
    "inner join TORVEX_USERGROUPS g on g.groupId = p.groupId where p.pageId = ? order by g.name";
/// What is inherited has no value of its own, whatever stands there.
constexpr std::string_view selectMetaData =
    "select t.metaData_name, m.metaData_value from TORVEX_PAGES_METADATA_TWIN m "
    "inner join TORVEX_METADATA t on t.metaData_id = m.metaData_id "
    "where m.metaData_pageId = ? and coalesce(m.metaData_inherited, 0) = 0 order by t.metaData_name";

/// In the order in which they are listed.
constexpr std::array<std::string_view, 18> setupParts{"title",
                                                      "type",
                                                      "template",
                                                      "baseTemplate",
                                                      "stylesheet",
                                                      "application",
                                                      "appParamPublic",
                                                      "appParamAdmin",
                                                      "appSystemFolder",
                                                      "navigation",
                                                      "previous",
                                                      "next",
                                                      "up",
                                                      "onlineFrom",
                                                      "onlineTo",
                                                      "breadcrumb",
                                                      "dynMenu",
                                                      "loginPage"};
constexpr std::array<std::string_view, 5> pageParts{"appSystemFolder", "previous", "next", "up", "loginPage"};

constexpr std::size_t compareColumns = 5;

/// What a page is called: "Visit (aa.en.01)"; the number of one that is gone.
std::string pageNamed(const db::Rows& row, const std::string& part) {
    if (row.number(part, -1) <= 0) return {};
    const std::string node = row.text(part + "Node");
    return node.empty() ? row.text(part) : fmt::format("{} ({})", row.text(part + "Title"), node);
}

/// Texts by what they are of.
using Texts = std::map<std::string, std::string, std::less<>>;

Texts setupOf(db::Connection& connection, PageId pageId, Twin twin) {
    Texts setup;
    auto row = connection.query(onTwin(selectSetup, twin), {pageId});
    if (!row.next()) return setup;
    for (const std::string_view part : setupParts) setup.emplace(part, row.text(part));
    for (const std::string_view part : pageParts)
        setup.find(part)->second = pageNamed(row, std::string(part));
    return setup;
}

std::string groupsOf(db::Connection& connection, PageId pageId, Twin twin) {
    std::string names;
    auto rows = connection.query(onTwin(selectGroups, twin), {pageId});
    while (rows.next()) names.append(names.empty() ? "" : ", ").append(rows.text("name"));
    return names;
}

Texts metaDataOf(db::Connection& connection, PageId pageId, Twin twin) {
    Texts values;
    auto rows = connection.query(onTwin(selectMetaData, twin), {pageId});
    while (rows.next()) values.emplace(rows.text("metaData_name"), rows.text("metaData_value"));
    return values;
}

/// The list in the making.
class Differences {
  public:
    void add(std::string_view part, std::string_view design, std::string_view live, int bodyId = 0,
             std::string_view name = {}) {
        if (design != live) grid_.add({part, bodyId, design, live, name});
    }
    Value take() { return gridOrEmpty(std::move(grid_)); }

  private:
    ResultGrid grid_{compareColumns};
};

std::string_view textOf(const Texts& texts, std::string_view name) {
    const auto found = texts.find(name);
    return found == texts.end() ? std::string_view() : std::string_view(found->second);
}

void addMetaData(Differences& differences, const Texts& design, const Texts& live) {
    Texts names = design;
    names.insert(live.begin(), live.end());
    for (const auto& [name, value] : names) {
        differences.add("metaData", textOf(design, name), textOf(live, name), 0, name);
    }
}

/// "html: News" for a feed.
std::string kindAndFeed(const PageBody& body, const std::string& feedTitle) {
    const std::string kind(kindOfBody(body));
    return isFeed(body) ? kind + ": " + feedTitle : kind;
}

std::string_view shownText(const PageBody& body) {
    return isFeed(body) ? std::string_view() : std::string_view(body.text);
}

void addBody(Differences& differences, int bodyId, const TwinBodies& bodies) {
    differences.add("bodyKind", kindAndFeed(bodies.design, bodies.feedTitle),
                    kindAndFeed(bodies.live, bodies.liveFeedTitle), bodyId);
    differences.add("body", shownText(bodies.design), shownText(bodies.live), bodyId);
}

}  // namespace

Value desk::compare(const std::string& pageIdent) try {
    const PageId pageId = pageIdFrom(connection(), pageIdent);
    const Texts design = setupOf(connection(), pageId, Twin::Design);
    if (design.empty()) return {};
    const Texts live = setupOf(connection(), pageId, Twin::Live);
    Differences differences;
    for (const std::string_view part : setupParts) {
        differences.add(part, textOf(design, part), textOf(live, part));
    }
    differences.add("groups", groupsOf(connection(), pageId, Twin::Design),
                    groupsOf(connection(), pageId, Twin::Live));
    addMetaData(differences, metaDataOf(connection(), pageId, Twin::Design),
                metaDataOf(connection(), pageId, Twin::Live));
    for (const auto& [bodyId, bodies] : twinBodiesOf(connection(), pageId)) {
        addBody(differences, bodyId, bodies);
    }
    return differences.take();
} catch (...) {
    raiseFrom("compare !");
}

}  // namespace torvex
