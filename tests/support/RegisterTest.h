#pragma once

#include <string>
#include <vector>

#include "support/ManagerTest.h"

namespace torvex::test {

/// The base of tests of sites and languages: an installation whose folders are there, besides site "aa" and
/// language "en" further ones, and websites that have a row in every table.
class RegisterTest : public ManagerTest {
  protected:
    void SetUp() override;

    /// A row in every table that knows sites or languages; numbers are from `first` on.
    void fill(const std::string& site, const std::string& lang, int first);
    /// The tables that still have rows of a site (a language), with how many, as "TABLE 2".
    std::vector<std::string> tablesWithSite(const std::string& site);
    std::vector<std::string> tablesWithLanguage(const std::string& lang);
    /// The tables of what hangs on forums, newsflashes and categories, with their number of rows.
    std::vector<std::string> hangingRows();

    void folder(const std::string& path) { host.files.madeFolders.insert("/install/" + path); }
    bool isFolder(const std::string& path) { return host.files.folderExists("/install/" + path); }
    /// All folders that were made, sorted, below the installation.
    std::vector<std::string> folders();

    /// The row of another author who works in a place: "site.lang".
    void otherLoginIn(const std::string& place, const std::string& sessionId = "other-session");
};

}  // namespace torvex::test
