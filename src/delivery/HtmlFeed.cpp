// Feeds of HTML: a file or an address.

#include <optional>

#include "delivery/FeedParameters.h"
#include "delivery/FeedSource.h"
#include "delivery/Feeds.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/db/Connection.h"
#include "platform/net/HttpClient.h"
#include "platform/text/Text.h"
#include "records/Labels.h"
#include "records/Vocabulary.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

constexpr std::string_view selectFeed =
    "select feedSite, feedFile, feedURL, feedParameters from TORVEX_FEEDS_HTML where feedId = ?";

constexpr int mostTries = 3;

struct Feed {
    std::string site;
    std::string file;
    std::string address;
    std::string parameters;
};

std::optional<Feed> readFeed(db::Connection& connection, int feedId) {
    auto rows = connection.query(selectFeed, {feedId});
    if (!rows.next()) return {};
    return Feed{rows.text("feedSite"), std::string(text::trim(rows.text("feedFile"))),
                feeds::address(rows.text("feedURL")), rows.text("feedParameters")};
}

std::string redLine(std::string_view line) {
    return "<div align=\"center\"><font size=\"2\" color=\"#fc5a5a\">" + std::string(line) + "</font></div>";
}

std::string fromFile(HostContext& host, db::Connection& connection, const Feed& feed) {
    const std::string path = feeds::filePath(host, feed.site, feed.file);
    HTMLTemplate page(host);
    if (!path.empty() && page.load(path, TextFormat::SystemDefault)) return page.takeStrVal();
    return text::htmlEncode(
        vocabularyText(connection, host.session.text(sessionKey::defaultLanguage), label::fileMissing));
}

bool isStatic(std::string_view address) {
    return text::endsWith(address, ".htm") || text::endsWith(address, ".html");
}

bool isGood(int status) {
    return status >= 200 && status < 400;
}

HttpClient::Answer fetch(HostContext& host, const std::string& address) {
    HttpClient::Answer answer = feeds::fetch(host, address);
    for (int tries = 1; tries < mostTries && !isGood(answer.status); ++tries) {
        answer = feeds::fetch(host, address);
    }
    return answer;
}

std::string fromAddress(HostContext& host, const Feed& feed) {
    if (feed.address.empty()) return {};
    const std::string address =
        isStatic(feed.address)
            ? feed.address
            : feeds::withQuery(feed.address, feeds::queryText(host.request.queryItems(), feed.parameters));
    const HttpClient::Answer answer = fetch(host, address);
    const std::string status = std::to_string(answer.status);
    // Pages are written knowing that the status stands in front.
    if (isGood(answer.status)) return status + answer.body;
    return redLine("HTTP " + status + " - " + text::htmlEncode(answer.statusText));
}

}  // namespace

std::string htmlFeed(HostContext& host, db::Connection& connection, int feedId) {
    try {
        const std::optional<Feed> feed = readFeed(connection, feedId);
        if (!feed) return {};
        return feed->file.empty() ? fromAddress(host, *feed) : fromFile(host, connection, *feed);
    } catch (const std::exception& error) {
        return redLine("HTTP error - " + text::htmlEncode(feeds::shownReason(host, error)));
    }
}

}  // namespace torvex
