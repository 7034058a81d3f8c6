#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace torvex {
namespace db {
class Connection;
}
class SharedFiles;
struct HostContext;

/// Makes the folders of every pair of a site and a language that the connection sees, where they are missing,
/// and puts the two system files into each pair's folder of stylesheets.
void createSiteDirectories(HostContext& host, db::Connection& connection, SharedFiles& files);

/// The folders of a site, with all its languages in them.
std::vector<std::string> siteDirectories(const HostContext& host, std::string_view site);
/// The folders of a site in a language.
std::vector<std::string> websiteDirectories(const HostContext& host, std::string_view site,
                                            std::string_view lang);
/// Where the catalogue's pages of a language lie, below it one folder for each site.
std::string searchDirectory(const HostContext& host, std::string_view lang);

}  // namespace torvex
