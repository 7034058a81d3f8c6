// cManager: the register of sites.

#include "administration/SiteDirectories.h"
#include "administration/SiteRegister.h"
#include "administration/SiteRemoval.h"
#include "authoring/StatusCodes.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/RegisterLock.h"
#include "records/SiteCodes.h"
#include "replication/SharedFiles.h"

namespace torvex {

namespace {

constexpr std::string_view selectNamesake = "select site from TORVEX_SITES where name = ?";
constexpr std::string_view insertSite =
    "insert into TORVEX_SITES (site, name, description, lock) values (?, ?, ?, '')";
constexpr std::string_view deleteMetaData = "delete from TORVEX_METADATA where metaData_site = ?";
constexpr std::string_view insertMetaData =
    "insert into TORVEX_METADATA (metaData_site, metaData_name, metaData_description) values (?, ?, ?)";

constexpr std::string_view updateNameAndDescription =
    "update TORVEX_SITES set name = ?, description = ?, lock = '' where site = ?";
constexpr std::string_view updateDescription =
    "update TORVEX_SITES set description = ?, lock = '' where site = ?";

constexpr std::string_view selectName = "select name from TORVEX_SITES where site = ?";
constexpr std::string_view selectDescription = "select description from TORVEX_SITES where site = ?";
constexpr std::string_view selectSite = "select site from TORVEX_SITES where name = ?";
constexpr std::string_view selectSitesByCode =
    "select site, name, description from TORVEX_SITES order by site";
constexpr std::string_view selectSitesByName =
    "select site, name, description from TORVEX_SITES order by name, site";
constexpr std::string_view selectLanguages = "select lang from TORVEX_LANGUAGES order by lang";

struct MetaTag {
    std::string_view name;
    std::string_view description;
};
/// What the pages of a new site can be described by.
constexpr MetaTag firstMetaTags[] = {
    {"author", "Author"},
    {"comments", "Comments"},
    {"company", "Company"},
    {"keywords", "The html keywords"},
    {"subject", "The html subject"},
    {"description", "The html description"},
};

struct NewSite {
    std::string code;
    std::string_view name;
    std::string_view description;
};

void insertRows(db::Connection& transaction, const NewSite& site) {
    transaction.execute(insertSite, {site.code, site.name, site.description});
    transaction.execute(deleteMetaData, {site.code});
    for (const MetaTag& tag : firstMetaTags) {
        transaction.execute(insertMetaData, {site.code, tag.name, tag.description});
    }
}

/// False when the name is taken.
db::Outcome<bool> insertWithFolders(HostContext& host, db::Connection& transaction, const NewSite& site,
                                    SharedFiles& files) {
    lockRegisters(transaction);
    if (transaction.query(selectNamesake, {site.name}).next()) return db::refuse(false);
    insertRows(transaction, site);
    createSiteDirectories(host, transaction, files);
    return db::commit(true);
}

/// False also when it failed: nothing has changed then, and operators are told why.
bool make(HostContext& host, const NewSite& site) {
    SharedFiles files(host);
    const auto connection = db::openOwn(host);
    try {
        const auto made = db::inTransaction(*connection, [&](db::Connection& transaction) {
            return insertWithFolders(host, transaction, site, files);
        });
        if (!made.value) return false;
    } catch (const std::exception& error) {
        files.takeBack();
        host.log.warn("the site \"" + site.code + "\" was not made: " + error.what());
        return false;
    }
    files.replicate();
    return true;
}

/// A failure here is raised as "deleteSite"; one of the folders, later, as "addLanguage".
Removal removedEntry(HostContext& host, const std::string& code, int ownLogin) try {
    return removeSite(host, code, ownLogin);
} catch (...) {
    raiseFrom("deleteSite !");
}

}  // namespace

bool cManager::addSite(const std::string& siteId, const std::string& siteName,
                       const std::string& siteDescription, int advId) try {
    const NewSite site{siteCode(siteId), text::trim(siteName), text::trim(siteDescription)};
    if (site.name.empty() || !isCode(site.code) || !make(host_, site)) return false;
    if (advId > 0) {
        addAuditTrail("", std::to_string(advId), "new", "New site \"" + std::string(site.name) + "\"");
    }
    return true;
} catch (...) {
    raiseFrom("addSite !");
}

bool cManager::updateSite(const std::string& site, const std::string& name, const std::string& description,
                          int advId) try {
    const std::string code = siteCode(site);
    const std::string_view newName = text::trim(name);
    const std::string_view newDescription = text::trim(description);
    if (!hasCodeLength(code)) return false;
    const auto changed =
        newName.empty() ? connection().execute(updateDescription, {newDescription, code})
                        : connection().execute(updateNameAndDescription, {newName, newDescription, code});
    if (changed == 0) return false;
    if (advId > 0) {
        const std::string kept = newName.empty() ? getSiteName(code) : std::string(newName);
        addAuditTrail("", std::to_string(advId), "save", "Site \"" + kept + "\" has been updated");
    }
    return true;
} catch (...) {
    raiseFrom("updateSite !");
}

std::string cManager::deleteSite(const std::string& site, int advId) {
    if (!author_.isLoggedIn()) return std::string(status::notLoggedIn);
    const std::string code = text::lowerTrim(site);
    const Removal removed = removedEntry(host_, code, author_.loginId);
    if (!removed.refusal.empty()) return removed.refusal;
    try {
        for (const auto& folder : siteDirectories(host_, code)) deleteDirectory(folder);
        for (const auto& lang : safeCodes(connection(), selectLanguages)) {
            deleteDirectory(searchDirectory(host_, lang) + "/" + code);
        }
    } catch (...) {
        // Not this operation's name, but the line that operators know for this failure.
        raiseFrom("addLanguage !");
    }
    try {
        if (advId > 0) {
            addAuditTrail("", std::to_string(advId), "delete",
                          "Site \"" + removed.name + "\" has been removed");
        }
    } catch (...) {
        raiseFrom("deleteSite !");
    }
    return {};
}

std::string cManager::getSiteName(const std::string& site) try {
    return firstText(connection(), selectName, text::trim(site));
} catch (...) {
    raiseFrom("getSiteName !");
}

std::string cManager::getSiteDescription(const std::string& site) try {
    return firstText(connection(), selectDescription, text::trim(site));
} catch (...) {
    raiseFrom("getSiteDescription !");
}

std::string cManager::getSiteId(const std::string& siteName) try {
    return firstText(connection(), selectSite, text::trim(siteName));
} catch (...) {
    raiseFrom("getSiteId !");
}

Value cManager::getSites(int sortId) try {
    return db::gridOf(connection().query(sortId == 1 ? selectSitesByCode : selectSitesByName), 1);
} catch (...) {
    raiseFrom("getSites !");
}

}  // namespace torvex
