// cManager: the meta tags of a site.

#include "administration/MetaTags.h"

#include <array>

#include "administration/RecordRemoval.h"
#include "administration/SearchProperties.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/ItemLocks.h"
#include "records/RegisterLock.h"

namespace torvex {

namespace {

constexpr std::string_view selectNamesake =
    "select metaData_id from TORVEX_METADATA where metaData_site = ? and metaData_name = ? and metaData_id "
    "<> "
    "?";
constexpr std::string_view selectTags =
    "select metaData_id, metaData_name, metaData_description from TORVEX_METADATA where metaData_site = ? "
    "order by metaData_name, metaData_id";
constexpr std::string_view selectId =
    "select metaData_id from TORVEX_METADATA where metaData_site = ? and metaData_name = ? "
    "order by metaData_id";
constexpr std::string_view selectName = "select metaData_name from TORVEX_METADATA where metaData_id = ?";
constexpr std::string_view selectInSite =
    "select metaData_id from TORVEX_METADATA where metaData_id = ? and metaData_site = ?";

constexpr std::string_view describeTag =
    "update TORVEX_METADATA set metaData_description = ? where metaData_id = ?";
constexpr std::string_view insertTag =
    "insert into TORVEX_METADATA (metaData_site, metaData_name, metaData_description) values (?, ?, ?)";

constexpr std::array<std::string_view, 4> tagRows{
    "delete from TORVEX_LINKS where bodyId = 0 - ?",
    "delete from TORVEX_PAGES_METADATA_LIVE where metaData_id = ?",
    "delete from TORVEX_PAGES_METADATA_DESIGN where metaData_id = ?",
    "delete from TORVEX_METADATA where metaData_id = ?",
};

struct Tag {
    int id = 0;
    std::string name;

    bool isThere() const { return id > 0 && !name.empty(); }
};

Tag findTag(db::Connection& connection, const std::string& site, const std::string& ident) {
    const int id = metaTagOfSite(connection, site, ident);
    if (!text::isNumeric(ident)) return {id, ident};
    auto rows = connection.query(selectName, {id});
    return {id, rows.next() ? rows.text("metaData_name") : std::string()};
}

}  // namespace

int metaTagNamed(db::Connection& connection, std::string_view site, std::string_view name) try {
    auto rows = connection.query(selectId, {site, name});
    return rows.next() ? static_cast<int>(rows.number("metaData_id")) : 0;
} catch (...) {
    raiseFrom("getMetaTagId !");
}

int metaTagOfSite(db::Connection& connection, std::string_view site, std::string_view ident) {
    const std::string_view wanted = text::trim(ident);
    if (wanted.empty()) return 0;
    if (!text::isNumeric(wanted)) return metaTagNamed(connection, site, wanted);
    auto rows = connection.query(selectInSite, {text::toNumber(wanted), site});
    return rows.next() ? static_cast<int>(rows.number("metaData_id")) : 0;
}

std::string cManager::checkMetadata(const std::string& site, int metaDataId, const std::string& name) try {
    return connection().query(selectNamesake, {site, text::trim(name), metaDataId}).next() ? "1" : "0";
} catch (...) {
    raiseFrom("checkMetadata !");
}

Value cManager::getMetaTags(const std::string& site) try {
    return db::gridOf(connection().query(selectTags, {site}), 1);
} catch (...) {
    raiseFrom("getMetaTags !");
}

int cManager::getMetaTagId(const std::string& site, const std::string& metaTagName) {
    return metaTagNamed(connection(), site, metaTagName);
}

std::string cManager::getMetaTagName(int metaTagId) try {
    auto rows = connection().query(selectName, {metaTagId});
    return rows.next() ? rows.text("metaData_name") : std::string();
} catch (...) {
    raiseFrom("getMetaTagName !");
}

void cManager::saveMetaTag(const std::string& site, const std::string& metaTagName,
                           const std::string& metaTagDescription) try {
    if (!isSite(site)) return;
    db::inOwnTransaction(host_, [&](db::Connection& own) {
        // Of two who make the same tag, the second then finds it there.
        lockRegisters(own);
        const int id = metaTagNamed(own, site, metaTagName);
        if (id > 0) {
            own.execute(describeTag, {metaTagDescription, id});
        } else {
            own.execute(insertTag, {site, metaTagName, metaTagDescription});
        }
        return db::commit(id);
    });
} catch (...) {
    raiseFrom("saveMetaTag !");
}

std::string cManager::deleteMetaTag(const std::string& site, const std::string& metaTagIdent, int advId) {
    const std::string code = text::lowerTrim(site);
    const std::string ident = text::lowerTrim(metaTagIdent);
    return removeRecord("deleteMetaTag", 0, advId,
                        [&](db::Connection& transaction) -> db::Outcome<std::string> {
                            const Tag tag = findTag(transaction, code, ident);
                            if (!tag.isThere()) return db::refuse(record::notThere);
                            if (!takeItem(transaction, "metadata", std::to_string(tag.id), lockSeeker())) {
                                return db::refuse(record::locked);
                            }
                            removeSearchProperty(transaction, code, tag.name);
                            deleteRows(transaction, tagRows, tag.id);
                            return db::commit("Metadata \"" + tag.name + '"');
                        });
}

}  // namespace torvex
