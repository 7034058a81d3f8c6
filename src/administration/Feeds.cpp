// cManager: the registers of feeds.

#include <array>

#include "administration/RecordRemoval.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "records/ItemLocks.h"

namespace torvex {

namespace {

/// What differs between the two registers.
struct FeedRegister {
    std::string_view item;
    std::string_view word;
    std::string_view selectNamesake;
    std::string_view selectList;
    std::string_view selectName;
    std::array<std::string_view, 2> selectUses;
    std::array<std::string_view, 1> deletions;
};

constexpr FeedRegister htmlFeeds{
    "HTMLfeed",
    "HTML feed",
    "select feedId from TORVEX_FEEDS_HTML where feedSite = ? and feedLang = ? and feedName = ? and feedId <> "
    "?",
    "select feedId, feedName, feedDescription from TORVEX_FEEDS_HTML where feedSite = ? and feedLang = ? "
    "order by feedName, feedId",
    "select feedName from TORVEX_FEEDS_HTML where feedId = ?",
    {"select feedId from TORVEX_BODIES_DESIGN where bodyType = 2 and feedId = ?",
     "select feedId from TORVEX_BODIES_LIVE where bodyType = 2 and feedId = ?"},
    {"delete from TORVEX_FEEDS_HTML where feedId = ?"}};

constexpr FeedRegister xmlFeeds{
    "XMLfeed",
    "XML feed",
    "select feedId from TORVEX_FEEDS_XML where feedSite = ? and feedLang = ? and feedName = ? and feedId <> "
    "?",
    "select feedId, feedName, feedDescription from TORVEX_FEEDS_XML where feedSite = ? and feedLang = ? "
    "order by feedName, feedId",
    "select feedName from TORVEX_FEEDS_XML where feedId = ?",
    {"select feedId from TORVEX_BODIES_DESIGN where bodyType = 3 and feedId = ?",
     "select feedId from TORVEX_BODIES_LIVE where bodyType = 3 and feedId = ?"},
    {"delete from TORVEX_FEEDS_XML where feedId = ?"}};

/// No feed has the number 0, so that it leaves none out.
std::string isTaken(db::Connection& connection, const FeedRegister& feeds, const std::string& site,
                    const std::string& lang, const std::string& name, int feedId) {
    return connection.query(feeds.selectNamesake, {site, lang, name, feedId}).next() ? "1" : "0";
}

Value listed(db::Connection& connection, const FeedRegister& feeds, const std::string& site,
             const std::string& lang) {
    return db::gridOf(connection.query(feeds.selectList, {site, lang}), 1);
}

/// What it was.
db::Outcome<std::string> removeFeed(db::Connection& transaction, const FeedRegister& feeds, int feedId,
                                    const LockSeeker& seeker) {
    auto rows = transaction.query(feeds.selectName, {feedId});
    if (!rows.next()) return db::refuse(record::notThere);
    if (findsAny(transaction, feeds.selectUses, feedId)) return db::refuse(record::inUse);
    if (!takeItem(transaction, feeds.item, std::to_string(feedId), seeker)) {
        return db::refuse(record::locked);
    }
    deleteRows(transaction, feeds.deletions, feedId);
    return db::commit(std::string(feeds.word) + " \"" + rows.text("feedName") + '"');
}

}  // namespace

std::string cManager::checkHTMLfeed(const std::string& site, const std::string& lang, const std::string& name,
                                    int feedId) try {
    return isTaken(connection(), htmlFeeds, site, lang, name, feedId);
} catch (...) {
    raiseFrom("checkHTMLfeed !");
}

std::string cManager::checkXMLfeed(const std::string& site, const std::string& lang, const std::string& name,
                                   int feedId) try {
    return isTaken(connection(), xmlFeeds, site, lang, name, feedId);
} catch (...) {
    raiseFrom("checkXMLfeed !");
}

Value cManager::getHTMLfeedList(const std::string& site, const std::string& lang) try {
    return listed(connection(), htmlFeeds, site, lang);
} catch (...) {
    raiseFrom("getHTMLfeedList !");
}

Value cManager::getXMLfeedList(const std::string& site, const std::string& lang) try {
    return listed(connection(), xmlFeeds, site, lang);
} catch (...) {
    raiseFrom("getXMLfeedList !");
}

std::string cManager::deleteHTMLfeed(int feedId, int advId) {
    return removeRecord("deleteHTMLfeed", feedId, advId, [&](db::Connection& transaction) {
        return removeFeed(transaction, htmlFeeds, feedId, lockSeeker());
    });
}

std::string cManager::deleteXMLfeed(int feedId, int advId) {
    return removeRecord("deleteXMLfeed", feedId, advId, [&](db::Connection& transaction) {
        return removeFeed(transaction, xmlFeeds, feedId, lockSeeker());
    });
}

}  // namespace torvex
