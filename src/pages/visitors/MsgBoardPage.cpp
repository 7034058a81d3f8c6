#include <algorithm>
#include <limits>

#include "delivery/PageAssembly.h"
#include "delivery/cServer.h"
#include "modules/messageBoard/msgBoard.h"
#include "pages/Pages.h"
#include "pages/visitors/SitePage.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

constexpr const char* folder = "torvex_msgBoard";
constexpr std::string_view address = "/torvex_msgBoard/";

// What a request names, and the page among its parameters.
constexpr const char* categoryName = "cat";
constexpr const char* archiveName = "archive";
constexpr const char* pageName = "page";
constexpr const char* rootName = "catRoot";

/// Which part of the board is asked for.
struct BoardRequest {
    std::string pageId;
    std::string root;
    std::string category;
    bool archive = false;
    int page = 1;
};

int pageNumber(const std::string& asked) {
    constexpr double most = std::numeric_limits<std::int16_t>::max();
    return text::isNumeric(asked) ? static_cast<int>(std::clamp(text::toNumber(asked), 1.0, most)) : 1;
}

/// Nothing outside of the root that the page names.
BoardRequest readRequest(const HostContext& host, cServer& server) {
    BoardRequest asked{.pageId = text::fromNumber(server.pgPageId()),
                       .root = server.getParameterValue(rootName, server.pgAppParamPublic()),
                       .category = host.request.queryString(categoryName),
                       .archive = host.request.queryString(archiveName) == "1",
                       .page = pageNumber(host.request.queryString(pageName))};
    if (asked.category.empty() || !text::startsWith(asked.category, asked.root)) asked.category = asked.root;
    return asked;
}

/// A category's path in an address, where points may stand as they are.
std::string inAddress(std::string_view path) {
    return text::replaceAll(text::urlEncode(path), "%2E", ".");
}

/// The addresses of the board's parts for an attribute; what is left open comes last.
class BoardAddresses {
  public:
    explicit BoardAddresses(const BoardRequest& asked)
        : board_(std::string(address) + "?pageId=" + asked.pageId + "&amp;cat="),
          category_(board_ + inAddress(asked.category)),
          archive_(category_ + "&amp;archive=1"),
          page_((asked.archive ? archive_ : category_) + "&amp;page=") {}

    void fill(HTMLTemplate& html) const {
        html.replaceTag("msgB_categoryURL", board_);
        html.replaceTag("msgB_recentURL", category_);
        html.replaceTag("msgB_archiveURL", archive_);
        html.replaceTag("msgB_pageURL", page_);
    }

    /// Calls of the client's function become addresses, so that they lead on without a script.
    std::string withPlainLinks(const std::string& html) const {
        constexpr std::string_view call = "href=\"javascript:viewCat('";
        constexpr std::string_view callEnd = "')\"";
        std::string plain;
        std::size_t kept = 0;
        for (std::size_t at = html.find(call); at != std::string::npos; at = html.find(call, at + 1)) {
            const std::size_t begin = at + call.size();
            const std::size_t end = html.find_first_of("'\\&\"", begin);
            if (end == std::string::npos || html.compare(end, callEnd.size(), callEnd) != 0) continue;
            plain.append(html, kept, at - kept).append("href=\"").append(board_);
            plain.append(inAddress(html.substr(begin, end - begin))).append("\"");
            kept = end + callEnd.size();
        }
        return plain.append(html, kept);
    }

  private:
    std::string board_;
    std::string category_;
    std::string archive_;
    std::string page_;
};

/// The page with the part of the board that is asked for, in its blocks.
std::string withBoard(HostContext& host, cServer& server, db::Connection& connection, std::string html) {
    const BoardRequest asked = readRequest(host, server);
    const BoardAddresses addresses(asked);
    HTMLTemplate page(host);
    page.setStrVal(std::move(html));
    addresses.fill(page);
    msgBoard board(host);
    board.connect(connection);
    return addresses.withPlainLinks(board.load(std::string(siteOf(server.pgNodeId())),
                                               std::string(langOf(server.pgNodeId())), "", asked.root,
                                               asked.category, asked.archive, asked.page, page.strVal()));
}

}  // namespace

void msgBoardPage(HostContext& host, const PolicyReports& reports) {
    answerSitePage(host, reports, folder, [&host](cServer& server, db::Connection& connection) {
        std::string html = server.torvex_preparePage();
        return text::startsWith(html, errorMark) ? html
                                                 : withBoard(host, server, connection, std::move(html));
    });
}

}  // namespace torvex
