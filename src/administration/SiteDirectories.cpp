#include "administration/SiteDirectories.h"

#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/SiteCodes.h"
#include "replication/SharedFiles.h"

namespace torvex {

namespace {

constexpr std::string_view selectPairs =
    "select site, lang from TORVEX_SITES cross join TORVEX_LANGUAGES order by site, lang";

void createAll(SharedFiles& files, const std::vector<std::string>& folders) {
    for (const std::string& folder : folders) files.createFolder(folder);
}

std::string installPath(const HostContext& host) {
    return host.application.text(applicationKey::installPath);
}

std::string stylesheets(const HostContext& host, std::string_view site) {
    return installPath(host).append("wwwroot/stylesheets/").append(site);
}

void copySystemFiles(const HostContext& host, SharedFiles& files, const std::string& folder) {
    const std::string root = installPath(host) + "wwwroot/";
    files.copyFile(root + "admin.css", folder + "/admin.css");
    files.copyFile(root + "config.xml", folder + "/config.xml");
}

}  // namespace

std::vector<std::string> siteDirectories(const HostContext& host, std::string_view site) {
    const std::string install = installPath(host);
    const auto& values = host.application;
    return {std::string(install).append("baseTemplates/").append(site),
            std::string(install).append("contentTemplates/").append(site),
            values.text(applicationKey::documentsPath).append(site),
            values.text(applicationKey::imagesPath).append(site),
            std::string(install).append("wwwroot/images/").append(site),
            stylesheets(host, site)};
}

std::vector<std::string> websiteDirectories(const HostContext& host, std::string_view site,
                                            std::string_view lang) {
    const std::string install = installPath(host);
    const auto inLanguage = [&](std::string folder) { return folder.append("/").append(lang); };
    return {inLanguage(std::string(install).append("baseTemplates/").append(site)),
            inLanguage(std::string(install).append("contentTemplates/").append(site)),
            inLanguage(stylesheets(host, site))};
}

std::string searchDirectory(const HostContext& host, std::string_view lang) {
    return installPath(host).append("search/html/").append(lang);
}

void createSiteDirectories(HostContext& host, db::Connection& connection, SharedFiles& files) try {
    auto rows = connection.query(selectPairs);
    std::string last;
    while (rows.next()) {
        const std::string site = text::lowerTrim(rows.text("site"));
        const std::string lang = text::lowerTrim(rows.text("lang"));
        if (!isSafeCode(site) || !isSafeCode(lang)) continue;
        if (site != last) createAll(files, siteDirectories(host, site));
        last = site;
        createAll(files, websiteDirectories(host, site, lang));
        copySystemFiles(host, files, stylesheets(host, site).append("/").append(lang));
    }
} catch (...) {
    raiseFrom("createSiteDirectories !");
}

}  // namespace torvex
