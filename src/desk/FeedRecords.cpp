// registers: feeds of HTML and of XML, as they are kept.

#include <algorithm>
#include <array>
#include <initializer_list>

#include "accounts/Actor.h"
#include "authoring/StatusCodes.h"
#include "delivery/FeedSource.h"
#include "desk/DesignStatus.h"
#include "desk/RecordFields.h"
#include "desk/RecordLock.h"
#include "desk/registers.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/text/Text.h"
#include "records/Existence.h"
#include "records/RegisterLock.h"
#include "records/SiteCodes.h"

namespace torvex {

namespace {

constexpr std::size_t longestAddress = 500;
constexpr std::size_t longestParameters = 1000;

using Outcome = db::Outcome<std::string>;

/// One of the two registers, as a change sees it.
struct FeedRegister {
    std::string_view operation;
    std::string_view word;  ///< of the audit trail
    std::string_view item;  ///< of the item locks
    std::string_view selectPlace;
    std::string_view selectNamesake;
    std::string_view insert;  ///< site and language, then the columns in the order of `Feed::columns`
    std::string_view update;
};

constexpr FeedRegister htmlFeeds{
    .operation = "saveHTMLfeed",
    .word = "HTML feed",
    .item = "htmlFeed",
    .selectPlace = "select feedSite, feedLang from TORVEX_FEEDS_HTML where feedId = ?",
    .selectNamesake =
        "select feedId from TORVEX_FEEDS_HTML where feedSite = ? and feedLang = ? and feedName = ? "
        "and feedId <> ? order by feedId",
    .insert =
        "insert into TORVEX_FEEDS_HTML (feedSite, feedLang, feedName, feedDescription, feedParameters, "
        "feedURL, feedFile, lock) values (?, ?, ?, ?, ?, ?, ?, '')",
    .update =
        "update TORVEX_FEEDS_HTML set feedName = ?, feedDescription = ?, feedParameters = ?, feedURL = ?, "
        "feedFile = ?, lock = '' where feedId = ?",
};
constexpr FeedRegister xmlFeeds{
    .operation = "saveXMLfeed",
    .word = "XML feed",
    .item = "xmlFeed",
    .selectPlace = "select feedSite, feedLang from TORVEX_FEEDS_XML where feedId = ?",
    .selectNamesake =
        "select feedId from TORVEX_FEEDS_XML where feedSite = ? and feedLang = ? and feedName = ? "
        "and feedId <> ? order by feedId",
    .insert =
        "insert into TORVEX_FEEDS_XML (feedSite, feedLang, feedName, feedDescription, feedParameters, "
        "feedURL_XML, feedFile_XML, feedURL_XSL, feedFile_XSL, feedPreserveWhiteSpace, lock) "
        "values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, '')",
    .update =
        "update TORVEX_FEEDS_XML set feedName = ?, feedDescription = ?, feedParameters = ?, feedURL_XML = ?, "
        "feedFile_XML = ?, feedURL_XSL = ?, feedFile_XSL = ?, feedPreserveWhiteSpace = ?, lock = '' "
        "where feedId = ?",
};

constexpr std::string_view selectHtmlFeeds =
    "select feedId, feedName, feedDescription, feedURL, feedFile, feedParameters from TORVEX_FEEDS_HTML "
    "where feedSite = ? and feedLang = ? and (? = 0 or feedId = ?) order by feedName, feedId";
constexpr std::string_view selectXmlFeeds =
    "select feedId, feedName, feedDescription, feedURL_XML, feedFile_XML, feedURL_XSL, feedFile_XSL, "
    "feedParameters, feedPreserveWhiteSpace from TORVEX_FEEDS_XML "
    "where feedSite = ? and feedLang = ? and (? = 0 or feedId = ?) order by feedName, feedId";

/// Where one of a feed's documents comes from: a file among the site's documents, or else an address.
struct Source {
    std::string address;
    std::string file;

    Source(const std::string& givenAddress, const std::string& givenFile)
        : address(recordText(givenAddress, longestAddress)), file(recordText(givenFile, longestAddress)) {}
};

bool isWebAddress(std::string_view address) {
    return text::startsWith(address, "http://") || text::startsWith(address, "https://");
}

/// A feed as it is to be.
struct Feed {
    int id;
    std::string site;
    std::string lang;
    std::string name;
    std::string description;
    std::string parameters;
    std::vector<Source> sources;
    /// Of an XML feed.
    std::vector<int> flags = {};

    std::vector<db::Parameter> columns() const {
        std::vector<db::Parameter> all{std::string_view(name), std::string_view(description),
                                       std::string_view(parameters)};
        for (const auto& [address, file] : sources) {
            all.emplace_back(std::string_view(address));
            all.emplace_back(std::string_view(file));
        }
        for (const int flag : flags) all.emplace_back(flag);
        return all;
    }
};

bool isNowhere(const Source& source) {
    return source.address.empty() && source.file.empty();
}

bool isUsable(HostContext& host, const Feed& feed, const Source& source) {
    const bool isAddress = source.address.empty() || isWebAddress(feeds::address(source.address));
    return isAddress && (source.file.empty() || !feeds::filePath(host, feed.site, source.file).empty());
}

bool isThere(db::Connection& own, const FeedRegister& feeds, const Feed& feed) {
    auto rows = own.query(feeds.selectPlace, {feed.id});
    return rows.next() && text::equals(text::trim(rows.text("feedSite")), feed.site) &&
           text::equals(text::trim(rows.text("feedLang")), feed.lang);
}

/// "0" when there is none.
std::string namesakeOf(db::Connection& own, const FeedRegister& feeds, const Feed& feed, int id) {
    auto rows = own.query(feeds.selectNamesake, {feed.site, feed.lang, feed.name, id});
    return rows.next() ? rows.text("feedId") : "0";
}

std::string_view refusalOf(HostContext& host, db::Connection& own, const FeedRegister& feeds,
                           const Feed& feed) {
    if (feed.id != 0 && !isThere(own, feeds, feed)) return designStatus::gone;
    if (!siteExists(own, feed.site) || !languageExists(own, feed.lang)) return designStatus::noWebsite;
    if (feed.name.empty()) return designStatus::nameMissing;
    if (std::any_of(feed.sources.begin(), feed.sources.end(), isNowhere)) return designStatus::sourceMissing;
    for (const Source& source : feed.sources)
        if (!isUsable(host, feed, source)) return designStatus::noSource;
    return namesakeOf(own, feeds, feed, feed.id) != "0" ? designStatus::nameTaken : std::string_view();
}

Outcome add(db::Connection& own, const FeedRegister& feeds, const Feed& feed) {
    auto columns = feed.columns();
    columns.insert(columns.begin(), {std::string_view(feed.site), std::string_view(feed.lang)});
    own.execute(feeds.insert, columns);
    return db::commit(namesakeOf(own, feeds, feed, 0));
}

Outcome change(db::Connection& own, const Actor& actor, const FeedRegister& feeds, const Feed& feed) {
    const RecordLock lock(own, actor, feeds.item, feed.id);
    if (!lock.isHeld()) return db::refuse(designStatus::openElsewhere);
    auto columns = feed.columns();
    columns.emplace_back(feed.id);
    own.execute(feeds.update, columns);
    return db::commit(std::to_string(feed.id));
}

Outcome write(HostContext& host, db::Connection& own, const Actor& actor, const FeedRegister& feeds,
              const Feed& feed) {
    lockRegisters(own);
    if (const auto refused = refusalOf(host, own, feeds, feed); !refused.empty()) return db::refuse(refused);
    return feed.id == 0 ? add(own, feeds, feed) : change(own, actor, feeds, feed);
}

struct Saved {
    std::string answer;
    std::string_view action;  ///< of the audit trail; "" when nothing has changed
    std::string description;
};

Saved save(HostContext& host, const FeedRegister& feeds, const Feed& feed) {
    const Actor actor = actorOf(host);
    if (!actor.isLoggedIn()) return {std::string(status::notLoggedIn), {}, {}};
    const auto outcome = db::tryInOwnTransaction(
        host, std::string(feeds.operation) + " of " + std::to_string(feed.id), status::failed,
        [&](auto& own) { return write(host, own, actor, feeds, feed); });
    if (!outcome.isCommitted) return {outcome.value, {}, {}};
    const std::string named = std::string(feeds.word) + " \"" + feed.name + '"';
    if (feed.id == 0) return {outcome.value, "new", "New " + named};
    return {outcome.value, "save", named + " has been updated"};
}

}  // namespace

Value registers::getHTMLfeeds(const std::string& site, const std::string& lang, int feedId) try {
    return db::gridOf(
        connection().query(selectHtmlFeeds, {siteCode(site), text::lowerTrim(lang), feedId, feedId}));
} catch (...) {
    raiseFrom("getHTMLfeeds !");
}

Value registers::getXMLfeeds(const std::string& site, const std::string& lang, int feedId) try {
    return db::gridOf(
        connection().query(selectXmlFeeds, {siteCode(site), text::lowerTrim(lang), feedId, feedId}));
} catch (...) {
    raiseFrom("getXMLfeeds !");
}

std::string registers::saveHTMLfeed(int feedId, const std::string& site, const std::string& lang,
                                    const std::string& name, const std::string& description,
                                    const std::string& url, const std::string& file,
                                    const std::string& parameters, int advId) {
    const Feed feed{feedId,
                    siteCode(site),
                    text::lowerTrim(lang),
                    recordName(name),
                    recordDescription(description),
                    recordText(parameters, longestParameters),
                    {Source(url, file)}};
    const auto saved = save(host_, htmlFeeds, feed);
    if (!saved.action.empty()) recordChange("saveHTMLfeed", advId, saved.action, saved.description);
    return saved.answer;
}

std::string registers::saveXMLfeed(int feedId, const std::string& site, const std::string& lang,
                                   const std::string& name, const std::string& description,
                                   const std::string& urlXml, const std::string& fileXml,
                                   const std::string& urlXsl, const std::string& fileXsl,
                                   const std::string& parameters, bool preserveWhiteSpace, int advId) {
    const Feed feed{feedId,
                    siteCode(site),
                    text::lowerTrim(lang),
                    recordName(name),
                    recordDescription(description),
                    recordText(parameters, longestParameters),
                    {Source(urlXml, fileXml), Source(urlXsl, fileXsl)},
                    {preserveWhiteSpace ? 1 : 0}};
    const auto saved = save(host_, xmlFeeds, feed);
    if (!saved.action.empty()) recordChange("saveXMLfeed", advId, saved.action, saved.description);
    return saved.answer;
}

}  // namespace torvex
