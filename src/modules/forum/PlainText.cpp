#include "modules/forum/PlainText.h"

#include <algorithm>
#include <array>

#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::array<std::string_view, 2> schemes{"https://", "http://"};
/// Behind an address these belong to the sentence around it.
constexpr std::string_view punctuation = ".,;:!?'";
constexpr std::string_view blanks = " \t\n";

bool endsAddress(char c) {
    return static_cast<unsigned char>(c) <= ' ' || c == '<' || c == '>' || c == '"' || c == '\\' || c == 0x7f;
}

/// How long the scheme at that place is; 0 for none.
std::size_t schemeAt(std::string_view text, std::size_t at) {
    if (at > 0 && isWordCharacter(text[at - 1])) return 0;
    for (const std::string_view scheme : schemes) {
        if (text::matchLength(text, at, scheme) == scheme.size()) return scheme.size();
    }
    return 0;
}

/// A bracket at the end belongs to the address only if it was opened in it.
std::string_view withoutPunctuation(std::string_view address) {
    while (!address.empty()) {
        const bool closes = address.back() == ')' && std::count(address.begin(), address.end(), '(') <
                                                         std::count(address.begin(), address.end(), ')');
        if (!closes && punctuation.find(address.back()) == std::string_view::npos) break;
        address.remove_suffix(1);
    }
    return address;
}

/// The address that begins there; "" when there is none.
std::string_view addressAt(std::string_view text, std::size_t at) {
    if (text[at] != 'h' && text[at] != 'H') return {};
    const std::size_t scheme = schemeAt(text, at);
    if (scheme == 0) return {};
    std::size_t end = at + scheme;
    while (end < text.size() && !endsAddress(text[end])) ++end;
    const std::string_view address = withoutPunctuation(text.substr(at, end - at));
    return address.size() > scheme && isWordCharacter(address[scheme]) ? address : std::string_view();
}

/// Calls `plain` for what stands between addresses and `link` for each of them, in order.
template <typename Plain, typename Link>
void split(std::string_view text, Plain plain, Link link) {
    std::size_t done = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view address = addressAt(text, at);
        if (address.empty()) {
            ++at;
            continue;
        }
        plain(text.substr(done, at - done));
        link(address);
        at = done = at + address.size();
    }
    plain(text.substr(done));
}

void appendEncoded(std::string& html, std::string_view text) {
    html += text::replaceAll(text::htmlEncode(text), "\n", "<br>\n");
}

std::string paragraph(std::string_view text) {
    std::string html = "<p>";
    split(
        text, [&](std::string_view piece) { appendEncoded(html, piece); },
        [&](std::string_view address) {
            const std::string encoded = text::htmlEncode(address);
            html.append("<a href=\"").append(encoded);
            html.append("\" rel=\"nofollow ugc noopener\">").append(encoded).append("</a>");
        });
    return html + "</p>\n";
}

bool isKept(char c) {
    return static_cast<unsigned char>(c) >= ' ' && c != 0x7f;
}

std::string_view stripped(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

}  // namespace

bool isWordCharacter(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || byte >= 0x80;
}

std::string plainTextHtml(std::string_view text) {
    std::string html;
    html.reserve(text.size() + text.size() / 8 + 8);
    while (!text.empty()) {
        const std::size_t end = std::min(text.find("\n\n"), text.size());
        const std::string_view piece = stripped(text.substr(0, end));
        if (!piece.empty()) html += paragraph(piece);
        text.remove_prefix(std::min(end + 2, text.size()));
    }
    return html;
}

std::size_t countLinks(std::string_view text) {
    std::size_t links = 0;
    split(
        text, [](std::string_view) {}, [&](std::string_view) { ++links; });
    return links;
}

std::string cleanText(std::string_view text) {
    std::string clean;
    clean.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '\n' || (c == '\r' && (i + 1 == text.size() || text[i + 1] != '\n'))) {
            clean += '\n';
        } else if (c == '\t') {
            clean += ' ';
        } else if (isKept(c)) {
            clean += c;
        }
    }
    return std::string(stripped(text::toValidUtf8(clean)));
}

std::string cleanLine(std::string_view text) {
    std::string line = cleanText(text);
    std::replace(line.begin(), line.end(), '\n', ' ');
    return line;
}

}  // namespace torvex
