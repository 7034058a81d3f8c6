#include "administration/SiteRegister.h"

#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/SiteCodes.h"

namespace torvex {

std::string firstText(db::Connection& connection, std::string_view statement, std::string_view key) {
    auto rows = connection.query(statement, {key});
    return rows.next() ? rows.value(std::size_t{0}).toText() : std::string();
}

std::vector<std::string> safeCodes(db::Connection& connection, std::string_view statement) {
    std::vector<std::string> codes;
    auto rows = connection.query(statement);
    while (rows.next()) {
        std::string code = text::lowerTrim(rows.value(std::size_t{0}).toText());
        if (isSafeCode(code)) codes.push_back(std::move(code));
    }
    return codes;
}

}  // namespace torvex
