#include "templates/EmailLinks.h"

#include <algorithm>
#include <fmt/format.h>

namespace torvex {

namespace {

bool isSeparator(char c) {
    return c == '.' || c == '-' || c == '_';
}

bool isAddressCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || isSeparator(c);
}

/// The part of `text` that ends it and holds only address characters.
std::string_view runBefore(std::string_view text) {
    std::size_t begin = text.size();
    while (begin > 0 && isAddressCharacter(text[begin - 1])) --begin;
    return text.substr(begin);
}

std::string_view runBehind(std::string_view text) {
    const auto* end = std::find_if_not(text.begin(), text.end(), isAddressCharacter);
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

/// What of the characters ahead of the "@" may stand there; "" when they are no local part.
std::string_view localPart(std::string_view run) {
    if (run.empty() || isSeparator(run.back())) return {};
    while (isSeparator(run.front())) run.remove_prefix(1);
    return run;
}

/// What of the characters behind the "@" is a domain; "" when they are none.
std::string_view domainPart(std::string_view run) {
    if (run.empty() || isSeparator(run.front())) return {};
    // Given back before anything is judged: the dot that ends a sentence is no part of the address in it.
    while (isSeparator(run.back())) run.remove_suffix(1);
    const std::size_t dot = run.rfind('.');
    if (dot == std::string_view::npos) return {};
    const std::string_view label = run.substr(dot + 1);
    const std::size_t labelLength = std::min(label.find_first_of("-_"), label.size());
    constexpr std::size_t shortestLabel = 2;
    return labelLength < shortestLabel ? std::string_view() : run.substr(0, dot + 1 + labelLength);
}

void appendLink(std::string& result, std::string_view address) {
    fmt::format_to(std::back_inserter(result), "<a href=\"mailto:{0}\">{0}</a>", address);
}

}  // namespace

std::string linkEmailAddresses(std::string_view text) {
    std::string result;
    result.reserve(text.size() + text.size() / 8);
    // The first character of what is left is passed over: nothing stands in front of it.
    for (std::size_t at = text.find('@', 1); at != std::string_view::npos; at = text.find('@', 1)) {
        const std::string_view local = localPart(runBefore(text.substr(0, at)));
        const std::string_view domain = domainPart(runBehind(text.substr(at + 1)));
        const std::size_t end = at + 1 + domain.size();
        if (local.empty() || domain.empty()) {
            result.append(text, 0, end);
        } else {
            const std::size_t begin = at - local.size();
            result.append(text, 0, begin);
            appendLink(result, text.substr(begin, end - begin));
        }
        text.remove_prefix(end);
    }
    return result.append(text);
}

}  // namespace torvex
