#include "delivery/LinkScan.h"

#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view commentEnd = "-->";
constexpr std::string_view anchorEnd = "</a>";
constexpr std::string_view maskedCommentEnd = "|-\u00A7\u00A7-|";

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

struct TagSpan {
    std::size_t begin;       ///< of the start tag
    std::size_t end;         ///< behind its ">"
    std::size_t innerEnd;    ///< of the text in it
    std::size_t closingEnd;  ///< behind its end tag
};

constexpr std::size_t stretchLength = 128;

/// Whether a tag with these two characters behind its "<" may begin within a stretch. Written without an
/// early exit, so that it is vectorised: a page is full of tags, and few of them are links.
bool mayHoldTag(const char* stretch, char second, char third) {
    constexpr char toLower = 0x20;
    unsigned char found = 0;
    for (std::size_t i = 0; i < stretchLength; ++i) {
        found |= static_cast<unsigned char>((stretch[i] == '<') & ((stretch[i + 1] | toLower) == second) &
                                            ((stretch[i + 2] | toLower) == third));
    }
    return found != 0;
}

bool standsAt(std::string_view html, std::size_t at, std::string_view tag) {
    if (html.size() - at < tag.size()) return false;
    std::size_t same = 1;
    while (same < tag.size() && lowered(html[at + same]) == tag[same]) ++same;
    return same == tag.size();
}

/// Where the lower-case ASCII `tag` ("<a ") next stands. Letters with a form beyond ASCII (k, s) must not be
/// in it.
std::size_t findTag(std::string_view html, std::string_view tag, std::size_t from) {
    while (from < html.size()) {
        const bool isFull = html.size() - from >= stretchLength + 2;
        const std::size_t end = isFull ? from + stretchLength : html.size();
        if (!isFull || mayHoldTag(html.data() + from, tag[1], tag[2])) {
            for (std::size_t at = html.find('<', from); at < end; at = html.find('<', at + 1)) {
                if (standsAt(html, at, tag)) return at;
            }
        }
        from = end;
    }
    return text::npos;
}

/// Behind the next ">" that doesn't end a comment; `npos` when there is none.
std::size_t endOfTag(std::string_view html, std::size_t from) {
    for (std::size_t at = from; (at = html.find('>', at)) != text::npos; ++at) {
        if (at < 2 || html.substr(at - 2, 2) != "--") return at + 1;
    }
    return text::npos;
}

std::vector<TagSpan> findAnchors(std::string_view html, std::size_t from) {
    std::vector<TagSpan> tags;
    while (true) {
        const std::size_t begin = findTag(html, "<a ", from);
        if (begin == text::npos) break;
        const std::size_t end = endOfTag(html, begin);
        if (end == text::npos) break;
        const std::size_t innerEnd = findTag(html, anchorEnd, end);
        if (innerEnd == text::npos) break;
        from = innerEnd + anchorEnd.size();
        tags.push_back({begin, end, innerEnd, from});
    }
    return tags;
}

std::vector<TagSpan> findAreas(std::string_view html, std::size_t from) {
    std::vector<TagSpan> tags;
    std::size_t end = from;
    while (true) {
        const std::size_t begin = findTag(html, "<area ", end);
        if (begin == text::npos) break;
        end = endOfTag(html, begin);
        if (end == text::npos) break;
        tags.push_back({begin, end, end, end});
    }
    return tags;
}

/// Few tags hold a marker, so most are told by one plain look.
std::string replaced(std::string tag, std::string_view from, std::string_view to) {
    if (tag.find(from) != text::npos) tag = text::replaceAll(tag, from, to);
    return tag;
}

std::vector<std::string> startTags(std::string_view html, const std::vector<TagSpan>& spans) {
    std::vector<std::string> tags;
    tags.reserve(spans.size());
    for (const TagSpan& span : spans) {
        std::string tag(html.substr(span.begin, span.end - span.begin));
        tags.push_back(replaced(std::move(tag), commentEnd, maskedCommentEnd));
    }
    return tags;
}

std::string rewriteTags(std::string_view html, const std::vector<TagSpan>& spans, LinkTag kind,
                        LinkPolicy& policy) {
    std::vector<std::string> tags = startTags(html, spans);
    policy.prepare(tags);
    std::string result;
    result.reserve(html.size() + spans.size() * 80);
    std::size_t copied = 0;
    for (std::size_t i = 0; i < spans.size(); ++i) {
        const TagSpan& span = spans[i];
        result.append(html.substr(copied, span.begin - copied));
        const std::string tag =
            replaced(policy.rewrite(std::move(tags[i]), kind), maskedCommentEnd, commentEnd);
        result.append(tag);
        result.append(html.substr(span.end, span.innerEnd - span.end));
        if (kind == LinkTag::Anchor && !tag.empty()) result.append(anchorEnd);
        copied = span.closingEnd;
    }
    return result.append(html.substr(copied));
}

}  // namespace

std::string rewriteLinks(std::string_view html, LinkPolicy& policy) {
    const std::size_t body = findTag(html, "<body", 0);
    const std::size_t headLength = body == text::npos ? 0 : body;
    std::string page = rewriteTags(html, findAnchors(html, headLength), LinkTag::Anchor, policy);
    const auto areas = findAreas(page, headLength);
    if (areas.empty()) return page;
    return rewriteTags(page, areas, LinkTag::Area, policy);
}

}  // namespace torvex
