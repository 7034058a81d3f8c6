#include "pages/authors/PageView.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <fmt/format.h>

#include "delivery/StartTag.h"
#include "pages/authors/AuthorsDocument.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view linkScript = "<script src=\"/torvex/tryview.js\"></script>";

/// The element and the attribute that says what stands in it.
struct FrameKind {
    std::string_view name;
    std::string_view address;
    bool hasEnd;
};

constexpr std::array kinds = {FrameKind{"iframe", "src", true}, FrameKind{"object", "data", true},
                              FrameKind{"embed", "src", false}, FrameKind{"frame", "src", false},
                              FrameKind{"portal", "src", true}, FrameKind{"fencedframe", "src", true}};

constexpr std::string_view boxStyle =
    "display:inline-block;box-sizing:border-box;max-width:100%;min-height:48px;padding:12px 16px;"
    "border:1px dashed #74818a;background:#eceee9;color:#1d2733;font:14px/20px system-ui,sans-serif;"
    "overflow-wrap:anywhere";

bool endsName(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '/' || c == '>';
}

bool isTag(std::string_view html, std::size_t at, std::string_view name) {
    const std::string_view rest = html.substr(at + 1);
    return text::startsWith(rest, name) && rest.size() > name.size() && endsName(rest[name.size()]);
}

const FrameKind* kindAt(std::string_view html, std::size_t at) {
    const auto found = std::find_if(kinds.begin(), kinds.end(),
                                    [&](const FrameKind& kind) { return isTag(html, at, kind.name); });
    return found == kinds.end() ? nullptr : &*found;
}

/// Behind the ">" that ends a tag, which may stand within quotes before.
std::size_t endOfTag(std::string_view html, std::size_t at) {
    char quote = 0;
    for (; at < html.size(); ++at) {
        const char c = html[at];
        if (quote != 0) {
            if (c == quote) quote = 0;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '>') {
            return at + 1;
        }
    }
    return html.size();
}

/// The value of an attribute as it stands in the tag, still encoded.
std::string valueIn(std::string_view text, std::string_view name) {
    const StartTag tag{std::string(text)};
    const auto attribute = tag.find(name);
    return attribute ? std::string(tag.valueOf(*attribute)) : std::string();
}

std::string boxFor(std::string_view tag, const FrameKind& kind, std::string_view sentence) {
    // The address is HTML already, but for quotes that ended it.
    std::string address = text::replaceAll(valueIn(tag, kind.address), "<", "&lt;");
    address = text::replaceAll(address, ">", "&gt;");
    const std::string words = filled(text::htmlEncode(sentence), "address", address);
    return fmt::format("<span class=\"torvexFrame\" style=\"{}\">{}</span>", boxStyle, words);
}

std::size_t behindElement(std::string_view html, std::size_t tagEnd, const FrameKind& kind) {
    if (!kind.hasEnd) return tagEnd;
    const std::size_t end = text::find(html, fmt::format("</{}", kind.name), tagEnd);
    return end == text::npos ? tagEnd : endOfTag(html, end);
}

std::size_t skipBlanks(std::string_view tag, std::size_t at) {
    while (at < tag.size() && (endsName(tag[at]) && tag[at] != '>')) ++at;
    return at;
}

/// Behind the value of an attribute whose name ends here, if it has one.
std::size_t behindValue(std::string_view tag, std::size_t at) {
    const std::size_t equals = skipBlanks(tag, at);
    if (equals >= tag.size() || tag[equals] != '=') return at;
    const std::size_t value = tag.find_first_not_of(" \t\r\n\f", equals + 1);
    if (value == std::string_view::npos) return tag.size();
    const bool isQuoted = tag[value] == '"' || tag[value] == '\'';
    const std::size_t end =
        isQuoted ? tag.find(tag[value], value + 1) : tag.find_first_of(" \t\r\n\f>", value);
    if (end == std::string_view::npos) return tag.size();
    return isQuoted ? end + 1 : end;
}

/// A tag whose handlers of events have names that browsers don't know.
std::string withQuietHandlers(std::string_view tag) {
    std::string result;
    std::size_t done = 0;
    std::size_t at = std::min(tag.find_first_of(" \t\r\n\f/>"), tag.size());
    for (at = skipBlanks(tag, at); at < tag.size() && tag[at] != '>'; at = skipBlanks(tag, at)) {
        const std::size_t end = std::min(tag.find_first_of(" \t\r\n\f/>=", at + 1), tag.size());
        if (end - at > 2 && text::startsWith(tag.substr(at, end - at), "on")) {
            result.append(tag.substr(done, at - done)).append("data-");
            done = at;
        }
        at = behindValue(tag, end);
    }
    return result.append(tag.substr(done));
}

std::size_t behindScript(std::string_view html, std::size_t tagEnd) {
    const std::size_t end = text::find(html, "</script", tagEnd);
    return end == text::npos ? html.size() : endOfTag(html, end);
}

}  // namespace

std::string forEditing(std::string_view html, std::string_view sentence) {
    std::string result;
    result.reserve(html.size());
    std::size_t done = 0;
    for (std::size_t at = html.find('<'); at != std::string_view::npos; at = html.find('<', done)) {
        result.append(html.substr(done, at - done));
        if (html.substr(at).starts_with("<!--")) {
            const std::size_t end = html.find("-->", at);
            done = end == std::string_view::npos ? html.size() : end + 3;
            result.append(html.substr(at, done - at));
            continue;
        }
        const std::size_t tagEnd = endOfTag(html, at);
        const std::string_view tag = html.substr(at, tagEnd - at);
        done = tagEnd;
        if (const FrameKind* kind = kindAt(html, at)) {
            result.append(boxFor(tag, *kind, sentence));
            done = behindElement(html, tagEnd, *kind);
        } else if (isTag(html, at, "script")) {
            done = behindScript(html, tagEnd);
        } else if (at + 1 < html.size() && std::isalpha(static_cast<unsigned char>(html[at + 1])) != 0) {
            result.append(withQuietHandlers(tag));
        } else {
            done = at + 1;
            result += '<';
        }
    }
    return result.append(html.substr(done));
}

std::string withLinkScript(std::string html) {
    std::size_t place = 0;
    if (const std::size_t head = text::find(html, "<head"); head != text::npos && endsName(html[head + 5])) {
        place = endOfTag(html, head);
    } else if (const std::size_t type = text::find(html, "<!doctype"); type != text::npos) {
        place = endOfTag(html, type);
    }
    return html.insert(place, linkScript);
}

}  // namespace torvex
