#include "host/http/ErrorPages.h"

#include "pages/ContentPolicy.h"
#include "pages/visitors/MessagePage.h"

namespace torvex::errorPages {

namespace {

struct Wording {
    std::string_view title;
    std::string_view happened;
    std::string_view next;
};

constexpr std::string_view toStart = "You can go back, or begin at the home page.";

Wording wordingOf(int status) {
    switch (status) {
        case 400:
            return {"This request could not be understood",
                    "The address or the data sent is not in a valid form.",
                    "Check the address for missing or stray characters and try again."};
        case 403:
            return {"You may not see this", "Your visit does not have the right to open this address.",
                    "If you have a login, log in and try again. Otherwise ask the owner of this site."};
        case 404:
            return {"This page was not found",
                    "There is nothing at this address. It may have been moved or removed.",
                    "Check the address, or begin at the home page."};
        case 405:
            return {"This can't be done here",
                    "The address exists, but it does not take this kind of request.", toStart};
        case 408:
            return {"The request took too long", "It did not arrive completely within the time allowed.",
                    "Check your connection and try again."};
        case 413:
            return {"Too much was sent at once", "The form or file is larger than this server takes.",
                    "Send less text or a smaller file."};
        case 414:
            return {"The address is too long", "This server does not take addresses of such length.",
                    "Shorten the address, or use the form that led here with less text."};
        case 415:
            return {"This kind of data is not taken",
                    "What was sent is in a form that this address does not read.",
                    "Use the form of the page itself to send it."};
        case 416:
            return {"This part does not exist", "The part asked for lies behind the end of the file.",
                    "Load the file again from its beginning."};
        case 417:
            return {"This expectation can't be met",
                    "The request asks for something that this server does not do.", "Try again without it."};
        case 421:
            return {"This site is not here", "The address names a host that this server does not answer for.",
                    "Check the address. If the site is yours, add its name to the hosts of this server."};
        case 431:
            return {"The request's header is too large",
                    "Most often the cookies of this site have become too many.",
                    "Delete this site's cookies in your browser and try again."};
        case 500:
            return {"Something went wrong",
                    "An error on this server kept the page from being made. It is not your fault.",
                    "Please try again in a moment."};
        case 501:
            return {"This is not supported", "This server does not know this kind of request.", toStart};
        case 503:
            return {"Too busy just now", "More requests are arriving than can be answered.",
                    "Please try again in a few seconds."};
        default:
            return {"This did not work", "The request could not be answered.", toStart};
    }
}

Answer compose(int status, std::string_view reference) {
    static const std::string policy = ownPagePolicy();
    const Wording wording = wordingOf(status);
    Answer answer;
    answer.status = status;
    answer.body = messagePageHtml({.title = std::string(wording.title),
                                   .explanation = std::string(wording.happened),
                                   .advice = std::string(wording.next),
                                   .reference = std::string(reference)});
    answer.addField("Content-Type", "text/html; charset=utf-8");
    answer.addField("Cache-Control", "no-store");
    answer.addField("Content-Security-Policy", policy);
    return answer;
}

}  // namespace

Answer page(int status) {
    Answer answer = compose(status, "");
    if (status == 503) answer.addField("Retry-After", retryAfter);
    return answer;
}

Answer methodNotAllowed(std::string_view allowed) {
    Answer answer = compose(405, "");
    answer.addField("Allow", allowed);
    return answer;
}

Answer failure(std::string_view reference) {
    return compose(500, reference);
}

}  // namespace torvex::errorPages
