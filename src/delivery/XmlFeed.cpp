// Feeds of XML: a document and the stylesheet that makes HTML of it.

#include "delivery/XmlFeed.h"

#include <algorithm>
#include <initializer_list>

#include "delivery/FeedParameters.h"
#include "delivery/FeedSource.h"
#include "delivery/Feeds.h"
#include "platform/HostContext.h"
#include "platform/db/Connection.h"
#include "platform/files/FileSystem.h"
#include "platform/net/HttpClient.h"
#include "platform/text/ContentType.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view selectFeed =
    "select feedSite, feedFile_XML, feedURL_XML, feedFile_XSL, feedURL_XSL, feedParameters, "
    "feedPreserveWhiteSpace from TORVEX_FEEDS_XML where feedId = ?";

bool endsInAny(std::string_view address, std::initializer_list<std::string_view> endings) {
    return std::any_of(endings.begin(), endings.end(),
                       [address](std::string_view ending) { return text::endsWith(address, ending); });
}

}  // namespace

std::optional<XmlFeed> XmlFeed::read(HostContext& host, db::Connection& connection, int feedId) {
    XmlFeed feed(host);
    {
        auto rows = connection.query(selectFeed, {feedId});
        if (!rows.next()) return {};
        const std::string site = rows.text("feedSite");
        feed.data_ = feed.sourceOf(site, rows.text("feedFile_XML"), rows.text("feedURL_XML"));
        feed.stylesheet_ = feed.sourceOf(site, rows.text("feedFile_XSL"), rows.text("feedURL_XSL"));
        feed.blanks_ = rows.number("feedPreserveWhiteSpace") == 1 ? XmlBlanks::Keep : XmlBlanks::Drop;
        const std::string own = rows.text("feedParameters");
        feed.parameters_ = feeds::parameters(host.request.queryItems(), own);
        feed.query_ = feeds::queryText(host.request.queryItems(), own);
    }
    if (feed.data_.place.empty() || feed.stylesheet_.place.empty()) return {};
    if (!endsInAny(feed.data_.place, {".xml"})) feed.addQuery(feed.data_);
    if (!endsInAny(feed.stylesheet_.place, {".xsl", ".xslt"})) feed.addQuery(feed.stylesheet_);
    return feed;
}

/// A file that is named but isn't there leaves the word to the address.
XmlFeed::Source XmlFeed::sourceOf(const std::string& site, const std::string& file,
                                  const std::string& address) const {
    const std::string_view name = text::trim(file);
    if (!name.empty()) {
        std::string path = feeds::filePath(*host_, site, name);
        if (!path.empty() && host_->files.fileExists(path)) return {std::move(path), true};
    }
    return {feeds::address(address), false};
}

void XmlFeed::addQuery(Source& source) const {
    if (source.isFile) return;
    source.place = feeds::withQuery(std::move(source.place), query_);
}

XmlText XmlFeed::load(const Source& source, XmlBlanks blanks) const {
    return source.isFile ? loadFile(source.place, blanks) : fetch(source.place, blanks);
}

XmlText XmlFeed::loadFile(const std::string& path, XmlBlanks blanks) const {
    std::optional<std::string> bytes = host_->files.readBytes(path);
    if (!bytes) throw XmlError("the feed's file is not there", -1);
    return {std::move(*bytes), blanks, {}};
}

XmlText XmlFeed::fetch(const std::string& address, XmlBlanks blanks) const {
    HttpClient::Answer answer = feeds::fetch(*host_, address);
    if (answer.status < 200 || answer.status > 299) {
        throw XmlError("HTTP " + std::to_string(answer.status) + " - " + answer.statusText, answer.status);
    }
    return {std::move(answer.bytes), blanks, charsetOf(answer.contentType)};
}

void XmlFeed::check(const XmlText& text) const {
    host_->xml.check(text, host_->deadline());
}

std::string XmlFeed::transform(const XmlText& stylesheet, const XmlText& data) const {
    return host_->xml.transform(stylesheet, data, parameters_, host_->deadline());
}

namespace {

/// A stylesheet that is none is told before data that aren't there; mostly both are in order, and looked at
/// together.
XmlText dataFor(const XmlFeed& feed, const XmlText& stylesheet) {
    try {
        return feed.loadData();
    } catch (const std::exception&) {
        feed.check(stylesheet);
        throw;
    }
}

}  // namespace

std::string xmlFeed(HostContext& host, db::Connection& connection, int feedId) {
    try {
        const std::optional<XmlFeed> feed = XmlFeed::read(host, connection, feedId);
        if (!feed) return {};
        const XmlText stylesheet = feed->loadStylesheet();
        return feed->transform(stylesheet, dataFor(*feed, stylesheet));
    } catch (const std::exception& error) {
        // Encoded, so that it shows as the plain text that it is: a stylesheet can stop with a visitor's
        // words.
        return text::htmlEncode(feeds::shownReason(host, error));
    }
}

}  // namespace torvex
