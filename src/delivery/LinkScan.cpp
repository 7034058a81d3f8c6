#include "delivery/LinkScan.h"

#include "platform/Text.h"

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

/// Where the lower-case ASCII `tag` ("<a ") next stands. Every "<" is told by a look at what follows it,
/// which on a page full of tags is faster than a general search. Letters with a form beyond ASCII (k, s) must
/// not be in it.
std::size_t findTag(std::string_view html, std::string_view tag, std::size_t from) {
    for (std::size_t at = html.find('<', from); at != text::npos; at = html.find('<', at + 1)) {
        if (html.size() - at < tag.size()) return text::npos;
        std::size_t same = 1;
        while (same < tag.size() && lowered(html[at + same]) == tag[same]) ++same;
        if (same == tag.size()) return at;
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

std::vector<TagSpan> findAnchors(std::string_view html) {
    std::vector<TagSpan> tags;
    std::size_t from = 0;
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

std::vector<TagSpan> findAreas(std::string_view html) {
    std::vector<TagSpan> tags;
    std::size_t end = 0;
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
std::string replaced(std::string_view tag, std::string_view from, std::string_view to) {
    return tag.find(from) == text::npos ? std::string(tag) : text::replaceAll(tag, from, to);
}

std::vector<std::string> startTags(std::string_view html, const std::vector<TagSpan>& spans) {
    std::vector<std::string> tags;
    tags.reserve(spans.size());
    for (const TagSpan& span : spans) {
        tags.push_back(
            replaced(html.substr(span.begin, span.end - span.begin), commentEnd, maskedCommentEnd));
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
    const std::string_view head = html.substr(0, headLength);
    std::string page =
        rewriteTags(html.substr(headLength), findAnchors(html.substr(headLength)), LinkTag::Anchor, policy);
    const auto areas = findAreas(page);
    if (!areas.empty()) page = rewriteTags(page, areas, LinkTag::Area, policy);
    return page.insert(0, head);
}

}  // namespace torvex
