// Search: the page of results.

#include "delivery/LinkBuilder.h"
#include "delivery/LinkMarking.h"
#include "installation/ScriptTimeouts.h"
#include "platform/HostContext.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "search/ResultsPage.h"
#include "search/Search.h"
#include "search/SearchError.h"
#include "search/SearchExtras.h"
#include "search/Suggestion.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

constexpr std::string_view applicationBlock = "torvex_application";

/// A search may test many results: twice the normal time while this lives, and the normal time after it.
class SearchTime {
  public:
    explicit SearchTime(HostContext& host) : host_(host), normal_(normalTimeout(host)) {
        host_.scriptTimeout = 2 * normal_;
    }
    SearchTime(const SearchTime&) = delete;
    SearchTime& operator=(const SearchTime&) = delete;
    ~SearchTime() { host_.scriptTimeout = normal_; }

  private:
    HostContext& host_;
    const int normal_;
};

std::string applicationPart(const HTMLTemplate& page) {
    const std::string part =
        page.blockExists(applicationBlock) ? page.extractBlock(applicationBlock) : std::string();
    const std::string_view trimmed = text::trim(part);
    if (trimmed.empty()) throw SearchError("Results template contains no application block !");
    return std::string(trimmed);
}

std::string withLinks(HostContext& host, db::Connection& connection, std::string html,
                      const PageIdentity& page, std::string_view mode) {
    const std::string site(siteOf(page.nodeId));
    if (!mode.empty()) {
        const LinkPlace place{site, std::string(langOf(page.nodeId)), twinOf(mode)};
        return withMarkedLinks(host, connection, std::move(html), place);
    }
    LinkBuilder links(host, connection, site);
    return rewriteLinks(html, links);
}

}  // namespace

std::string Search::loadResults(const std::string& pageIdent, const std::string& mode,
                                const std::string& html) {
    error_.clear();
    SearchSession session(host_.session);
    SearchAnswer answer;
    answer.words = isNewSearch(host_) ? askedWords(host_) : session.words();
    std::string filled = html;
    try {
        asSearchStep(host_, "Error in function loadResults (Search module) !", [&] {
            const PageIdentity page = identify(connection_.use(host_), pageIdent);
            if (!page.isValid()) throw SearchError("Page ID missing !");
            answer.pageId = page.pageId;
            filled = fillTemplate(page, text::lowerTrim(mode), html, answer.suggestion);
        });
    } catch (const SearchError& error) {
        error_ = error.what();
        session.clear();
        removeResults(filled);
    }
    answer.error = error_;
    HTMLTemplate shown(host_);
    shown.setStrVal(withSearchExtras(host_, std::move(filled), answer));
    shown.replaceTag("search_string", text::htmlEncode(answer.words));
    return shown.takeStrVal();
}

std::string Search::fillTemplate(const PageIdentity& page, const std::string& mode, std::string html,
                                 std::string& suggestion) {
    const bool suggests = showsSuggestion(html);
    HTMLTemplate whole(host_);
    whole.setStrVal(std::move(html));
    const std::string part = applicationPart(whole);
    const SearchTime time(host_);
    const SearchRun run = this->run(page, !mode.empty());
    std::string results = filledResults(host_, connection_.use(host_), run, part);
    if (suggests) suggestion = suggestedWords(host_, connection_.use(host_), run);
    whole.replaceBlock(applicationBlock,
                       withLinks(host_, connection_.use(host_), std::move(results), page, mode));
    return whole.takeStrVal();
}

SearchRun Search::run(const PageIdentity& page, bool isPreview) {
    db::Connection& connection = connection_.use(host_);
    if (!isNewSearch(host_)) return resumeSearch(host_, connection);
    SearchParameters search =
        asSearchStep(host_, "Error in function getSearchParameters (Search module) !", [&] {
            SearchParameters made = searchParameters(host_, connection, page, isPreview);
            SearchSession(host_.session).begin(made);
            return made;
        });
    return beginSearch(host_, connection, open_, std::move(search));
}

}  // namespace torvex
