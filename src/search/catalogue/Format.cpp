#include "search/catalogue/Format.h"

#include "platform/text/Text.h"

namespace torvex::catalogue {

int formatOf(const Xapian::Database& database) {
    return static_cast<int>(text::toNumber(database.get_metadata(std::string(metadata::format))));
}

std::string identityOf(const Xapian::Database& database) {
    return database.get_metadata(std::string(metadata::identity));
}

std::string databaseFolder(std::string_view installPath) {
    std::string folder(installPath);
    while (folder.ends_with('/')) folder.pop_back();
    return folder + "/data/search/catalogue";
}

}  // namespace torvex::catalogue
