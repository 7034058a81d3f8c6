#include "host/http/ResponseConversion.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <fmt/format.h>

#include "host/http/Ascii.h"
#include "host/http/ContentCoding.h"
#include "host/http/SecurityFields.h"
#include "platform/net/HttpDate.h"
#include "platform/text/Charset.h"

namespace torvex {

namespace {

constexpr std::array<std::string_view, 7> ownFields{
    "Content-Length", "Content-Type", "Connection", "Keep-Alive", "Date", "Transfer-Encoding", "Upgrade"};

bool isOwnField(std::string_view name) {
    return std::any_of(ownFields.begin(), ownFields.end(),
                       [name](std::string_view own) { return ascii::equals(own, name); });
}

bool isFieldName(std::string_view name) {
    return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
        return (ascii::lower(c) >= 'a' && ascii::lower(c) <= 'z') || ascii::isDigit(c) || c == '-' ||
               c == '_';
    });
}

std::string fieldValue(std::string_view value) {
    std::string result(value);
    std::erase_if(result, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; });
    return result;
}

/// An address may only hold ASCII without blanks; what it must not hold is escaped, what is escaped stays.
std::string address(std::string_view value) {
    std::string result;
    for (const char c : fieldValue(value)) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte > 0x7e || c == ' ' || c == '"' || c == '<' || c == '>') {
            result += fmt::format("%{:02X}", byte);
        } else {
            result += c;
        }
    }
    return result;
}

/// The name of the charset to send in: the response's, if it can be written.
std::string charsetOf(const Response& response) {
    if (response.charset.empty())
        return isTextType(response.contentType) && !response.isBinary() ? "utf-8" : "";
    return response.isBinary() || charset::isKnown(response.charset) ? response.charset : "utf-8";
}

void addContentType(Answer& answer, const Response& response, std::string_view charset) {
    std::string type = fieldValue(response.contentType);
    if (type.empty()) type = "application/octet-stream";
    if (!charset.empty() && type.find("charset=") == std::string::npos)
        type.append("; charset=").append(charset);
    answer.addField("Content-Type", type);
}

/// Pages are made for one visitor: no shared cache may keep them, and a browser asks again unless the page
/// says how long it is good for.
void addCaching(Answer& answer, const Response& response) {
    std::string control = fieldValue(response.cacheControl);
    if (response.expires) {
        const int seconds = std::max(*response.expires, 0) * 60;
        answer.addField("Expires", httpDate(std::time(nullptr) + seconds));
        if (control.empty() && seconds > 0) control = fmt::format("private, max-age={}", seconds);
    }
    const bool isGiven = std::any_of(response.headers.begin(), response.headers.end(), [](const auto& field) {
        return ascii::equals(field.first, "Cache-Control");
    });
    if (!control.empty() || !isGiven)
        answer.addField("Cache-Control", control.empty() ? "private, no-cache" : control);
}

void addFields(Answer& answer, const Response& response) {
    for (const auto& [name, value] : response.headers) {
        if (!isFieldName(name) || isOwnField(name)) continue;
        answer.addField(name, ascii::equals(name, "Location") ? address(value) : fieldValue(value));
    }
}

}  // namespace

Answer toAnswer(Response response) {
    Answer answer;
    answer.status = response.status >= 200 && response.status <= 599 ? response.status : 500;
    const std::string charset = charsetOf(response);
    addContentType(answer, response, fieldValue(charset));
    addCaching(answer, response);
    addFields(answer, response);
    answer.replacesFields = std::ranges::any_of(
        response.headers, [](const auto& field) { return SecurityFields::has(field.first); });
    const bool asUtf8 = response.isBinary() || charset.empty() || ascii::equals(charset, "utf-8");
    std::string body = response.takeBody();
    answer.body = asUtf8 ? std::move(body) : charset::encodeForHtml(body, charset);
    if (answer.status == 204 || answer.status == 304) {
        answer.body = std::string();
        answer.hasLength = false;
    }
    return answer;
}

}  // namespace torvex
