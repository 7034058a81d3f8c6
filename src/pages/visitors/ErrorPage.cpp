#include <array>

#include "pages/Pages.h"
#include "pages/visitors/MessagePage.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

struct ErrorText {
    std::string_view value;
    int status;
    std::string_view title;
    std::string_view explanation;
    std::string_view advice;
};

constexpr ErrorText unknownError = {"", 500, "This page can't be shown", "Something is wrong with this page.",
                                    "Please try again later, or begin at the home page."};

constexpr std::array errorTexts = {
    ErrorText{"page_not_found", 404, "Page not found", "There is no page at this address.",
              "It may have moved or been removed. Begin at the home page, or check the address."},
    ErrorText{"page_offline", 404, "This page is not online",
              "The page exists but is not shown at the moment.",
              "Please come back later, or begin at the home page."},
    ErrorText{"no_login", 403, "You may not see this page",
              "This page is for members, and you are not logged in as one who may see it.",
              "Log in with another name, or ask the owners of this site for access."},
    ErrorText{"no_template", 500, "This page has no template",
              "The page exists, but the template that it is shown with is missing.",
              "The owners of this site have to choose a content template for it."},
    ErrorText{"no_base_template", 500, "This page has no base template",
              "The page exists, but the frame that it is shown in is missing.",
              "The owners of this site have to choose a base template for it."},
    ErrorText{"no_application", 500, "This page has no application",
              "The page stands for an application that is missing or has no address.",
              "The owners of this site have to choose an application for it."},
};

const ErrorText& textOf(std::string_view value) {
    for (const auto& text : errorTexts) {
        if (text::equals(text.value, value)) return text;
    }
    return unknownError;
}

/// "yyyymmdd" as "yyyy-mm-dd"; "" for anything else, as the address may hold anything.
std::string readableDay(std::string_view day) {
    if (day.size() != 8 || day.find_first_not_of("0123456789") != std::string_view::npos) return {};
    return std::string(day.substr(0, 4))
        .append("-")
        .append(day.substr(4, 2))
        .append("-")
        .append(day.substr(6));
}

}  // namespace

void errorPage(HostContext& host) {
    const ErrorText& error = textOf(text::trim(host.request.queryString("error")));
    MessagePage page{.title = std::string(error.title),
                     .explanation = std::string(error.explanation),
                     .advice = std::string(error.advice),
                     .reference = {}};
    if (const std::string day = readableDay(host.request.queryString("onlineFrom")); !day.empty()) {
        page.explanation = "The page will be online from " + day + ".";
    }
    answerMessage(host.response, error.status, page);
}

}  // namespace torvex
