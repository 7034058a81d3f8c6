#include "search/designs/LinkFinder.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>

#include "delivery/LinkNotation.h"
#include "platform/ApplicationValues.h"
#include "platform/Keys.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

/// What is longer is no target: an index has no place for it.
constexpr std::size_t longestTarget = 400;

constexpr std::string_view attribute = "href";

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool isNameSign(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '_' || c == ':';
}

/// "&amp;" and "%20" as what they stand for.
std::string decoded(std::string_view value) {
    std::string text = text::replaceAll(value, "&amp;", "&");
    text = text::replaceAll(text::replaceAll(text, "&quot;", "\""), "&#39;", "'");
    return text::urlDecode(text::replaceAll(text, "+", "%2B"));
}

/// An attribute's value: what stands behind "=", in quotes, in escaped quotes, or up to a blank.
std::string_view valueBehind(std::string_view html, std::size_t at) {
    while (at < html.size() && isBlank(html[at])) ++at;
    if (at == html.size() || html[at] != '=') return {};
    ++at;
    while (at < html.size() && isBlank(html[at])) ++at;
    if (at < html.size() && html[at] == '\\') ++at;
    if (at == html.size()) return {};
    const char quote = html[at];
    if (quote == '"' || quote == '\'') {
        ++at;
        return html.substr(at, std::min(html.find(quote, at), html.size()) - at);
    }
    std::size_t end = at;
    while (end < html.size() && !isBlank(html[end]) && html[end] != '>') ++end;
    return html.substr(at, end - at);
}

bool isPageAddress(std::string_view value) {
    if (value.starts_with('/')) value.remove_prefix(1);
    return text::startsWith(value, linkNotation::pageScript.substr(1)) ||
           text::startsWith(value, linkNotation::framesetScript.substr(1));
}

/// What stands between the parentheses of a notation; a value that was cut by quotes within them ends there.
std::string argumentOf(std::string_view value, std::string_view notation) {
    const std::string_view rest = value.substr(notation.size());
    return decoded(
        linkNotation::withoutQuotes(text::trim(rest.substr(0, std::min(rest.find(')'), rest.size())))));
}

std::optional<FoundLink> pageNamed(std::string_view identifier) {
    const std::string wanted = text::lowerTrim(identifier);
    const bool isFilledInLater = text::contains(wanted, linkNotation::markerStart);
    if (wanted.empty() || wanted.size() > longestTarget || isFilledInLater) return std::nullopt;
    constexpr PageId mostPages = 1e15;
    const PageId pageId = text::isNumeric(wanted) ? text::toNumber(wanted) : 0;
    const bool isNumber = pageId > 0 && pageId < mostPages && pageId == std::floor(pageId);
    if (!isNumber) return FoundLink{FoundLink::Kind::Page, 0, {}, wanted};
    return FoundLink{FoundLink::Kind::Page, pageId, {}, {}};
}

std::optional<FoundLink> documentNamed(const std::string& argument) {
    if (argument.empty() || argument.size() > longestTarget ||
        text::contains(argument, linkNotation::markerStart))
        return std::nullopt;
    auto [site, name] = linkNotation::documentNamed(argument, "");
    return FoundLink{FoundLink::Kind::Document, 0, std::move(site), std::move(name)};
}

std::optional<FoundLink> linkOf(std::string_view value) {
    const std::string_view address = text::trim(value);
    if (text::startsWith(address, linkNotation::page))
        return pageNamed(argumentOf(address, linkNotation::page));
    if (text::startsWith(address, linkNotation::file))
        return documentNamed(argumentOf(address, linkNotation::file));
    if (!isPageAddress(address)) return std::nullopt;
    const std::string whole = decoded(address);
    return pageNamed(linkNotation::pageInAddress(whole).value_or(std::string_view()));
}

/// Of an address of a file, "SITE/PATH" behind its prefix.
std::optional<FoundLink> fileOf(FoundLink::Kind kind, std::string_view rest) {
    const std::string path = decoded(rest.substr(0, rest.find_first_of("?#")));
    const std::size_t divider = path.find('/');
    const bool isFile = divider != std::string::npos && divider > 0 && divider + 1 < path.size();
    if (!isFile || path.size() > longestTarget || text::contains(path, linkNotation::markerStart))
        return std::nullopt;
    return FoundLink{kind, 0, text::lower(path.substr(0, divider)), path.substr(divider + 1)};
}

/// Up to what ends an address that begins behind this sign.
std::string_view addressBehind(char before, std::string_view rest) {
    if (before == '"' || before == '\'') return rest.substr(0, rest.find(before));
    if (before == '(') return rest.substr(0, rest.find(')'));
    return rest.substr(0, rest.find_first_of(" \t\r\n\"'<>);,"));
}

/// One text on its way: tells each link, and where its target or address stands.
template <typename See>
class LinkFinder {
  public:
    LinkFinder(std::string_view html, See see) : html_(html), see_(see) {}

    void findTargets() {
        for (std::size_t at = 0; (at = text::find(html_, attribute, at)) != text::npos;) {
            const std::size_t begin = at;
            at += attribute.size();
            const bool isMarked = at < html_.size() && (html_[at] == ']' || html_[at] == '}');
            if (begin > 0 && isNameSign(html_[begin - 1])) continue;
            if (isMarked && html_[at] == ']') {
                see_(FoundLink{FoundLink::Kind::Unchosen, 0, {}, {}}, std::string_view());
                continue;
            }
            const std::string_view value = valueBehind(html_, at + (isMarked ? 1 : 0));
            tell(linkOf(value), value);
        }
    }
    void findFiles(FoundLink::Kind kind, std::string_view prefix) {
        if (prefix.empty()) return;
        for (std::size_t at = 0; (at = text::find(html_, prefix, at)) != text::npos;) {
            const char before = at == 0 ? ' ' : html_[at - 1];
            at += prefix.size();
            // Behind a name it is the address of another host.
            if (isNameSign(before) || before == '.') continue;
            const std::string_view address = addressBehind(before, html_.substr(at));
            tell(fileOf(kind, address), address);
        }
    }

  private:
    void tell(std::optional<FoundLink> link, std::string_view where) {
        if (link) see_(std::move(*link), where);
    }

    std::string_view html_;
    See see_;
};

template <typename See>
void forEachLink(std::string_view html, const FilePrefixes& prefixes, See see) {
    LinkFinder<See> finder(html, see);
    finder.findTargets();
    finder.findFiles(FoundLink::Kind::Image, prefixes.images);
    finder.findFiles(FoundLink::Kind::Document, prefixes.documents);
}

/// A link without a site leads into the page's own.
bool leadsTo(const MovedFile& file, const FoundLink& link, std::string_view pageSite) {
    return link.kind == file.kind && text::equals(link.target, file.fromFolders + file.name) &&
           text::equals(link.site.empty() ? pageSite : std::string_view(link.site), file.site);
}

/// How many signs of `written` are the path, some of them perhaps as "%20"; nothing when it begins otherwise.
std::optional<std::size_t> lengthOfPath(std::string_view written, std::string_view path) {
    constexpr std::size_t encodedSign = 3;
    std::size_t at = 0;
    for (const char sign : path) {
        if (at == written.size()) return std::nullopt;
        const bool isEncoded = written[at] == '%';
        const std::string_view one = written.substr(at, isEncoded ? encodedSign : 1);
        if (!text::equals(isEncoded ? text::urlDecode(one) : std::string(one), std::string_view(&sign, 1)))
            return std::nullopt;
        at += one.size();
    }
    return at;
}

/// A part of a text.
struct Place {
    std::size_t begin = 0;
    std::size_t length = 0;

    auto operator<=>(const Place&) const = default;
};

/// The folders of the file's path in what a link stands in.
std::optional<Place> foldersIn(std::string_view html, std::string_view where, const MovedFile& file) {
    for (std::size_t at = 0; at < where.size(); ++at) {
        const std::string_view rest = where.substr(at);
        if (!lengthOfPath(rest, file.fromFolders + file.name)) continue;
        const auto begin = static_cast<std::size_t>(rest.data() - html.data());
        return Place{begin, lengthOfPath(rest, file.fromFolders).value_or(0)};
    }
    return std::nullopt;
}

}  // namespace

std::string_view wordOf(FoundLink::Kind kind) {
    switch (kind) {
        case FoundLink::Kind::Page:
            return "page";
        case FoundLink::Kind::Image:
            return "image";
        case FoundLink::Kind::Document:
            return "document";
        case FoundLink::Kind::Unchosen:
            return "unchosen";
    }
    return "";
}

FilePrefixes filePrefixes(const ApplicationValues& application) {
    return {application.text(applicationKey::imagesUrl), application.text(applicationKey::documentsUrl)};
}

std::vector<FoundLink> linksIn(std::string_view html, const FilePrefixes& prefixes) {
    std::set<FoundLink> found;
    forEachLink(html, prefixes, [&](FoundLink link, std::string_view) { found.insert(std::move(link)); });
    return {found.begin(), found.end()};
}

std::string withFileMoved(std::string_view html, const FilePrefixes& prefixes, std::string_view pageSite,
                          const MovedFile& file) {
    std::set<Place> places;
    forEachLink(html, prefixes, [&](const FoundLink& link, std::string_view where) {
        if (!leadsTo(file, link, pageSite)) return;
        if (const auto place = foldersIn(html, where, file)) places.insert(*place);
    });
    std::string moved;
    std::size_t done = 0;
    for (const auto& [begin, length] : places) {
        moved.append(html.substr(done, begin - done)).append(file.toFolders);
        done = begin + length;
    }
    return moved.append(html.substr(done));
}

}  // namespace torvex
