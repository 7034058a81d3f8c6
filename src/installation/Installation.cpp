#include "installation/Installation.h"

#include <fmt/format.h>

#include "installation/Schema.h"
#include "installation/SchemaFiles.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/Keys.h"
#include "platform/db/ConnectionText.h"

namespace torvex {

namespace fs = std::filesystem;

namespace {

bool isInstallation(const fs::path& folder) {
    std::error_code error;
    return fs::is_regular_file(folder / settingsFileName, error);
}

/// With its links followed, so that the folder's own files are found beneath it.
fs::path absoluteFolder(const fs::path& folder) {
    std::error_code error;
    const fs::path real = fs::canonical(folder, error);
    return error ? fs::absolute(folder) : real;
}

fs::path findFolder(const std::optional<std::string>& given, const Environment& environment) {
    const auto require = [](const fs::path& folder, std::string_view source) {
        if (isInstallation(folder)) return absoluteFolder(folder);
        throw Error(
            fmt::format("there is no installation in {} ({}): it has no {}. Make one with "
                        "\"torvex init {}\"",
                        folder.string(), source, settingsFileName, folder.string()));
    };
    if (given) return require(*given, "given with --install");
    const auto variable = environment("TORVEX_INSTALL");
    if (variable && !variable->empty()) return require(*variable, "named by TORVEX_INSTALL");
    if (isInstallation(".")) return absoluteFolder(".");
    throw Error(
        "which installation? Name its folder with --install DIR or in the variable TORVEX_INSTALL, or go "
        "into it. A new one is made with \"torvex init DIR\"");
}

std::string absoluteText(const fs::path& folder, const std::string& url) {
    if (db::engineOf(url) != db::Engine::Sqlite) return url;
    return "sqlite:" + (folder / db::storeFolder(url)).lexically_normal().string();
}

}  // namespace

Installation Installation::open(const std::optional<std::string>& given, const Environment& environment) {
    const fs::path folder = findFolder(given, environment);
    Settings settings = readSettings(folder / settingsFileName);
    if (auto password = environment("TORVEX_DATABASE_PASSWORD")) settings.database.password = *password;
    return {folder, std::move(settings)};
}

Installation::Installation(fs::path folder, Settings settings) try
    : folder_(std::move(folder)),
      settings_(std::move(settings)),
      databaseText_(absoluteText(folder_, settings_.database.url)) {
} catch (const db::DatabaseError& error) {
    throw Error(fmt::format("url in [database]: {}", error.what()));
}

db::Lease Installation::openDatabase(db::Database& database, db::Purpose purpose) const {
    try {
        return database.open(databaseText_, settings_.database.user, settings_.database.password, purpose);
    } catch (const db::DatabaseError& error) {
        throw Error(fmt::format("the database can't be opened: {}", error.what()));
    }
}

db::Lease Installation::openCurrentDatabase(db::Database& database) const {
    auto connection = openDatabase(database);
    installedSchema().check(*connection);
    return connection;
}

void Installation::startValues(ApplicationValues& application) const {
    application.set(applicationKey::databaseText, databaseText_);
    application.set(applicationKey::databaseUser, settings_.database.user);
    application.set(applicationKey::databasePassword, settings_.database.password);
    application.set(applicationKey::installPath, folder_.string());
    application.set(applicationKey::imagesName, settings_.paths.images);
    application.set(applicationKey::documentsName, settings_.paths.documents);
    application.set(applicationKey::httpsOnly, settings_.server.httpsAlone);
}

}  // namespace torvex
