#include "delivery/MetaValues.h"

#include "platform/db/Connection.h"

namespace torvex {

namespace {

constexpr std::string_view selectValues =
    "select a.metaData_id, b.metaData_name, a.metaData_value, a.metaData_inherited "
    "from TORVEX_PAGES_METADATA_LIVE a left outer join TORVEX_METADATA b on a.metaData_id = b.metaData_id "
    "where a.metaData_pageId = ? order by a.metaData_id";

}  // namespace

std::vector<MetaValue> liveMetaValues(db::Connection& connection, PageId pageId) {
    std::vector<MetaValue> values;
    auto rows = connection.query(selectValues, {pageId});
    while (rows.next()) {
        values.push_back({rows.number("metaData_id"), rows.text("metaData_name"), rows.text("metaData_value"),
                          rows.number("metaData_inherited") != 0});
    }
    return values;
}

std::string metaLine(std::string_view name, std::string_view lang, std::string_view value) {
    std::string line = R"(<META NAME=")";
    line.append(name).append(R"(" LANG=")").append(lang);
    return line.append(R"(" CONTENT=")").append(value).append("\">\r\n");
}

}  // namespace torvex
