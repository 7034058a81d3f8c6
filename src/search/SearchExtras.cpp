#include "search/SearchExtras.h"

#include "platform/text/Text.h"
#include "search/SearchErrors.h"
#include "templates/HTMLTemplate.h"
#include "templates/Markers.h"

namespace torvex {

namespace {

constexpr std::string_view suggestion = "search_suggestion";

void showBlock(HTMLTemplate& page, std::string_view name, bool isShown) {
    if (!isShown) page.replaceAllBlocks(name, "");
}

}  // namespace

std::string withSearchExtras(HostContext& host, std::string html, const SearchAnswer& answer) {
    HTMLTemplate page(host);
    page.setStrVal(std::move(html));
    const bool isAsked = !answer.words.empty();
    const bool isWrong = isAsked && !answer.error.empty();
    const bool isExplained =
        answer.error == searchErrors::emptyQuery || answer.error == searchErrors::tooMany;
    showBlock(page, "search_asked", isAsked);
    showBlock(page, "search_notAsked", !isAsked);
    showBlock(page, "search_answered", isAsked && !isWrong);
    showBlock(page, "search_noWords", isWrong && answer.error == searchErrors::emptyQuery);
    showBlock(page, "search_tooMany", isWrong && answer.error == searchErrors::tooMany);
    showBlock(page, "search_failed",
              !isExplained && !answer.error.empty() && answer.error != searchErrors::noWords);
    showBlock(page, suggestion, !answer.suggestion.empty());
    page.replaceTag("search_pageId", text::fromNumber(answer.pageId));
    page.replaceTag("search_stringURL", text::urlEncode(answer.words));
    page.replaceTag(suggestion, text::htmlEncode(answer.suggestion));
    page.replaceTag("search_suggestionURL", text::urlEncode(answer.suggestion));
    return page.takeStrVal();
}

bool showsSuggestion(std::string_view html) {
    return markers::find(html, markers::tag(suggestion)) != text::npos;
}

}  // namespace torvex
