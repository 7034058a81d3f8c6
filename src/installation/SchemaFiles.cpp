#include "installation/SchemaFiles.h"

#include <charconv>
#include <fmt/format.h>

#include "installation/InstallFiles.h"
#include "platform/Errors.h"
#include "platform/db/SqliteStore.h"

namespace torvex {

namespace {

/// "0001_foundation.sql" is step 1, "foundation".
SchemaStep stepOf(std::string_view store, std::string_view file, std::string_view sql) {
    const std::size_t line = file.find('_');
    int number = 0;
    const auto [end, code] = std::from_chars(file.data(), file.data() + file.size(), number);
    if (line == std::string_view::npos || code != std::errc() || end != file.data() + line ||
        !file.ends_with(".sql")) {
        throw Error(fmt::format("the schema's file {} isn't named NUMBER_NAME.sql", file));
    }
    const std::string_view name = file.substr(line + 1, file.size() - line - 1 - 4);
    return {std::string(store), number, std::string(name), std::string(sql)};
}

}  // namespace

Schema installedSchema() {
    std::vector<SchemaStep> steps;
    for (const std::string_view store : db::storeNames) {
        const std::string folder = fmt::format("schema/{}/", store);
        for (const InstallFile& file : installFiles(folder)) {
            steps.push_back(stepOf(store, file.name().substr(folder.size()), file.bytes()));
        }
    }
    return {std::move(steps),
            {std::string(installFile("schema/postgresql/prepare.sql")),
             std::string(installFile("schema/postgresql/keep_identity.sql"))}};
}

}  // namespace torvex
