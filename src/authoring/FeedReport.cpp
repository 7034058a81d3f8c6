#include "authoring/FeedReport.h"

#include <optional>

#include "delivery/FeedSource.h"
#include "delivery/XmlFeed.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr int mostTries = 3;

/// A document that stayed one that isn't there.
struct DocumentFault {
    int code;
    std::string reason;
};

std::string report(const std::string& fault) {
    return R"(<div align="center"><font size="2" face="verdana,arial,helvetica" color="#fc5a5a">HTTP/XML error )" +
           fault + "</font></div>";
}

/// A fault with a code above 0 may pass, so that the document is asked for again.
XmlText loaded(HostContext& host, const XmlFeed& feed, XmlText (XmlFeed::*load)() const) {
    for (int tries = 1;; ++tries) {
        try {
            XmlText text = (feed.*load)();
            feed.check(text);
            return text;
        } catch (const XmlError& error) {
            if (error.code() < 1 || tries == mostTries) {
                throw DocumentFault{error.code(), feeds::shownReason(host, error)};
            }
        }
    }
}

}  // namespace

std::string reportedXmlFeed(HostContext& host, db::Connection& connection, int feedId) {
    try {
        const std::optional<XmlFeed> feed = XmlFeed::read(host, connection, feedId);
        if (!feed) return {};
        const XmlText stylesheet = loaded(host, *feed, &XmlFeed::loadStylesheet);
        return feed->transform(stylesheet, loaded(host, *feed, &XmlFeed::loadData));
    } catch (const DocumentFault& fault) {
        return report(std::to_string(fault.code) + " - " + text::htmlEncode(fault.reason));
    } catch (const std::exception& error) {
        return report("- " + text::htmlEncode(feeds::shownReason(host, error)));
    }
}

}  // namespace torvex
