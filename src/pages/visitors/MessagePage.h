#pragma once

#include <string>
#include <string_view>

namespace torvex {

/// A small page of the server's own: what happened, and what to do next. Needs no other file.
struct MessagePage {
    std::string title;        ///< plain text
    std::string explanation;  ///< plain text
    std::string advice;       ///< plain text; "" for none
    std::string reference;    ///< a number to name to the operators; "" for none
    std::string homeAddress = "/";
};

class Response;

/// Answers with the page: kept by nobody, and running no script.
void answerMessage(Response& response, int status, const MessagePage& page);

/// A document of the server's own around content, which is HTML; the title is plain text. `furtherStyle` is CSS.
std::string ownDocument(std::string_view language, std::string_view title, std::string_view content,
                        std::string_view furtherStyle = {});

/// The page as HTML in UTF-8; all texts are encoded.
std::string messagePageHtml(const MessagePage& page);

}  // namespace torvex
