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
#include "platform/xml/XslTransform.h"

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
        feed.parameters_ = feeds::parameters(host.request.queryItems(), rows.text("feedParameters"));
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
    source.place = feeds::withQuery(std::move(source.place), feeds::queryText(parameters_));
}

XmlDocument XmlFeed::load(const Source& source, XmlBlanks blanks) const {
    return source.isFile ? loadFile(source.place, blanks) : fetch(source.place, blanks);
}

XmlDocument XmlFeed::loadFile(const std::string& path, XmlBlanks blanks) const {
    const std::optional<std::string> bytes = host_->files.readBytes(path);
    if (!bytes) throw XmlError("the feed's file is not there", -1);
    return XmlDocument::parse(*bytes, blanks);
}

XmlDocument XmlFeed::fetch(const std::string& address, XmlBlanks blanks) const {
    const HttpClient::Answer answer = host_->http.get(address);
    if (answer.status < 200 || answer.status > 299) {
        throw XmlError("HTTP " + std::to_string(answer.status) + " - " + answer.statusText, answer.status);
    }
    return XmlDocument::parse(answer.bytes, blanks, charsetOf(answer.contentType));
}

std::string XmlFeed::transform(XmlDocument stylesheet, XmlDocument data) const {
    return torvex::transform({std::move(stylesheet), std::move(data), parameters_});
}

std::string xmlFeed(HostContext& host, db::Connection& connection, int feedId) {
    try {
        const std::optional<XmlFeed> feed = XmlFeed::read(host, connection, feedId);
        if (!feed) return {};
        XmlDocument stylesheet = feed->loadStylesheet();
        return feed->transform(std::move(stylesheet), feed->loadData());
    } catch (const std::exception& error) {
        // Encoded, so that it shows as the plain text that it is: a stylesheet can stop with a visitor's
        // words.
        return text::htmlEncode(feeds::shownReason(host, error));
    }
}

}  // namespace torvex
