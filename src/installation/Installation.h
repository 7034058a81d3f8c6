#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "installation/Environment.h"
#include "installation/Settings.h"
#include "platform/db/Database.h"

namespace torvex {
class ApplicationValues;
}

namespace torvex {

/// An installation: the folder that `torvex init` makes and that all other commands work on. Plain data once
/// opened; the database is opened by its user.
class Installation {
  public:
    /// The folder that is given, else the one that the variable TORVEX_INSTALL names, else the current
    /// folder. A password in TORVEX_DATABASE_PASSWORD goes before the one in the settings. Throws `Error`
    /// that says how to name a folder when there is no installation.
    static Installation open(const std::optional<std::string>& given, const Environment& environment);

    Installation(std::filesystem::path folder, Settings settings);

    const std::filesystem::path& folder() const { return folder_; }  ///< absolute
    const Settings& settings() const { return settings_; }

    /// The connection text, with the absolute folder for the embedded store.
    const std::string& databaseText() const { return databaseText_; }

    /// A connection to the whole database, without a look at its schema. Throws `Error` when it can't be
    /// reached.
    db::Lease openDatabase(db::Database& database, db::Purpose purpose = db::Purpose::Everything) const;
    /// The same, for programs that work on it. Throws `Error` too when its schema isn't this program's.
    db::Lease openCurrentDatabase(db::Database& database) const;

    /// Puts in what the application values start with: connection, folder and folders of media.
    void startValues(ApplicationValues& application) const;

  private:
    std::filesystem::path folder_;
    Settings settings_;
    std::string databaseText_;
};

/// The name of the settings file, by which a folder is known as an installation.
inline constexpr const char* settingsFileName = "torvex.toml";

}  // namespace torvex
