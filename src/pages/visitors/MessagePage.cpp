#include "pages/visitors/MessagePage.h"

#include "pages/ContentPolicy.h"
#include "platform/Response.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view style = R"(
:root{color-scheme:light dark;--ink:#1d2733;--soft:#4d5b6b;--paper:#f6f7f4;--card:#fff;--accent:#1f6f54}
@media (prefers-color-scheme:dark){:root{--ink:#e8ece9;--soft:#a9b5b0;--paper:#141a18;--card:#1d2522;--accent:#7fd0ae}}
*{box-sizing:border-box}
body{margin:0;min-height:100vh;display:grid;place-items:center;padding:1.5rem;background:var(--paper);color:var(--ink);
font:1.0625rem/1.6 system-ui,-apple-system,"Segoe UI",Roboto,sans-serif}
main{max-width:34rem;width:100%;background:var(--card);border-radius:1rem;padding:clamp(1.5rem,5vw,3rem);
box-shadow:0 1px 2px rgb(0 0 0/.08),0 12px 40px rgb(0 0 0/.08);border-top:.3rem solid var(--accent)}
h1{margin:0 0 .75rem;font-size:clamp(1.4rem,4vw,1.9rem);line-height:1.2}
p{margin:0 0 1rem}.advice{color:var(--soft)}
code{font:600 1em ui-monospace,"SFMono-Regular",Menlo,monospace;letter-spacing:.04em}
a{color:var(--accent);font-weight:600}a:focus-visible{outline:3px solid var(--accent);outline-offset:3px})";

std::string paragraph(std::string_view text, std::string_view attributes = "") {
    if (text.empty()) return {};
    return "<p" + std::string(attributes) + ">" + text::htmlEncode(text) + "</p>\n";
}

}  // namespace

void answerMessage(Response& response, int status, const MessagePage& page) {
    response.status = status;
    response.cacheControl = "no-store";
    response.addHeader("Content-Security-Policy", ownPagePolicy());
    response.write(messagePageHtml(page));
}

std::string ownDocument(std::string_view language, std::string_view title, std::string_view content,
                        std::string_view furtherStyle) {
    const std::string heading = text::htmlEncode(title);
    std::string html = "<!DOCTYPE html>\n<html lang=\"";
    html.append(text::htmlEncode(language)).append("\">\n<head>\n<meta charset=\"utf-8\">\n");
    html.append("<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n");
    html.append("<meta name=\"robots\" content=\"noindex\">\n<title>")
        .append(heading)
        .append("</title>\n<style>");
    html.append(style)
        .append(furtherStyle)
        .append("</style>\n</head>\n<body>\n<main>\n<h1>")
        .append(heading)
        .append("</h1>\n");
    return html.append(content).append("</main>\n</body>\n</html>\n");
}

std::string messagePageHtml(const MessagePage& page) {
    std::string content = paragraph(page.explanation);
    content += paragraph(page.advice, " class=\"advice\"");
    if (!page.reference.empty()) {
        content.append("<p>If it happens again, give the owner of this site the number <code>")
            .append(text::htmlEncode(page.reference))
            .append("</code></p>\n");
    }
    content.append("<p><a href=\"")
        .append(text::htmlEncode(page.homeAddress))
        .append("\">To the home page</a></p>\n");
    return ownDocument("en", page.title, content);
}

}  // namespace torvex
