// registers: the meta data of many pages at once.

#include <cstdint>
#include <map>
#include <set>

#include "desk/FirstRow.h"
#include "desk/registers.h"
#include "platform/Errors.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "records/SiteCodes.h"

namespace torvex {

namespace {

constexpr int mostPages = 200;
/// Beyond any tree, and within what engines count to.
constexpr std::size_t mostNodes = 200;

/// Pages without a value for the tag come first. The system branch has no meta data.
constexpr std::string_view selectPages =
    "select p.pageId, p.nodeId, p.title, m.metaData_id, m.metaData_value, m.metaData_inherited from ("
    "select d.pageId, d.nodeId, d.title, "
    "case when e.metaData_inherited = 1 or e.metaData_value <> '' then 1 else 0 end as hasIt "
    "from TORVEX_PAGES_DESIGN d left outer join TORVEX_PAGES_METADATA_DESIGN e "
    "on e.metaData_pageId = d.pageId and e.metaData_id = ? "
    "where d.site = ? and d.lang = ? and d.nodeId not like '%.99%' "
    "order by hasIt, d.nodeId limit ? offset ?) p "
    "left outer join TORVEX_PAGES_METADATA_DESIGN m on m.metaData_pageId = p.pageId "
    "order by p.hasIt, p.nodeId, m.metaData_id";
constexpr std::string_view selectOwnOf =
    "select a.nodeId, b.metaData_id, b.metaData_value from TORVEX_PAGES_DESIGN a "
    "inner join TORVEX_PAGES_METADATA_DESIGN b on b.metaData_pageId = a.pageId "
    "where coalesce(b.metaData_inherited, 0) = 0 and a.nodeId in (";

/// What a page has for a tag; no tag when it has none at all.
struct Line {
    PageId pageId;
    std::string nodeId;
    std::string title;
    int tag;
    std::string value;
    bool isInherited;
};

std::vector<Line> linesOf(db::Rows rows) {
    std::vector<Line> lines;
    while (rows.next()) {
        const bool isInherited = rows.number("metaData_inherited") != 0;
        lines.push_back({rows.number("pageId"), rows.text("nodeId"), rows.text("title"),
                         static_cast<int>(rows.number("metaData_id")),
                         isInherited ? std::string() : rows.text("metaData_value"), isInherited});
    }
    return lines;
}

/// What the ancestors of some pages have of their own.
class AncestorValues {
  public:
    AncestorValues(db::Connection& connection, const std::vector<Line>& lines) {
        std::set<std::string> nodes;
        for (const Line& line : lines) {
            if (!line.isInherited) continue;
            for (auto at = parentOf(line.nodeId); at.size() >= PageIdentity::rootLength; at = parentOf(at))
                nodes.emplace(at);
        }
        const std::vector<std::string> all(nodes.begin(), nodes.end());
        for (std::size_t from = 0; from < all.size(); from += mostNodes) read(connection, all, from);
    }

    /// Of the nearest that has one; "" when none has.
    std::string of(const Line& line) const {
        for (auto at = parentOf(line.nodeId); at.size() >= PageIdentity::rootLength; at = parentOf(at)) {
            const auto found = values_.find({text::lower(at), line.tag});
            if (found != values_.end()) return found->second;
        }
        return {};
    }

  private:
    void read(db::Connection& connection, const std::vector<std::string>& nodes, std::size_t from) {
        std::string statement(selectOwnOf);
        std::vector<db::Parameter> values;
        for (std::size_t i = from; i < nodes.size() && i < from + mostNodes; ++i) {
            statement += values.empty() ? "?" : ", ?";
            values.emplace_back(std::string_view(nodes[i]));
        }
        auto rows = connection.query(statement + ")", values);
        while (rows.next()) {
            const std::pair key{text::lower(rows.text("nodeId")),
                                static_cast<int>(rows.number("metaData_id"))};
            values_[key] = rows.text("metaData_value");
        }
    }

    std::map<std::pair<std::string, int>, std::string> values_;
};

}  // namespace

Value registers::getMetaSheet(const std::string& site, const std::string& lang, int tag, double from) try {
    const auto first = firstRow(from);
    if (!first) return {};
    const std::vector<Line> lines = linesOf(
        connection().query(selectPages, {tag, siteCode(site), text::lowerTrim(lang), mostPages, *first}));
    const AncestorValues ancestors(connection(), lines);
    ResultGrid grid(6);
    for (const Line& line : lines) {
        grid.add({line.pageId, line.nodeId, line.title, line.tag,
                  line.isInherited ? ancestors.of(line) : line.value, line.isInherited ? 1 : 0});
    }
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getMetaSheet !");
}

}  // namespace torvex
