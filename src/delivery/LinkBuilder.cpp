#include "delivery/LinkBuilder.h"

#include <algorithm>

#include "delivery/LinkNotation.h"
#include "delivery/cServer.h"
#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/db/Connection.h"
#include "platform/files/FileSystem.h"
#include "platform/text/ScriptText.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

using linkNotation::framesetScript;
using linkNotation::markerStart;
using linkNotation::pageInAddress;
using linkNotation::pageScript;
using linkNotation::withoutQuotes;

void replaceIn(std::string& link, std::string_view from, std::string_view to) {
    if (text::contains(link, from)) link = text::replaceAll(link, from, to);
}

/// Where `href=` with the quote is followed by `start`; the offset is that of `start`.
std::size_t findQuotedAddress(std::string_view link, char quote, std::string_view start) {
    constexpr std::string_view attribute = "href=";
    std::size_t at = text::find(link, attribute);
    for (; at != text::npos; at = text::find(link, attribute, at + 1)) {
        const std::size_t address = at + attribute.size() + 1;
        if (address > link.size() || link[address - 1] != quote) continue;
        if (text::startsWith(link.substr(address), start)) return address;
    }
    return text::npos;
}

/// With double quotes or, when there is none, with single ones.
std::size_t findAddress(std::string_view link, std::string_view start) {
    const std::size_t at = findQuotedAddress(link, '"', start);
    return at != text::npos || link.find('\'') == text::npos ? at : findQuotedAddress(link, '\'', start);
}

bool hasAddress(std::string_view link, std::string_view start) {
    return findAddress(link, start) != text::npos;
}

bool leadsOutside(std::string_view link) {
    return link.find("://") != text::npos &&
           std::any_of(linkNotation::outside.begin(), linkNotation::outside.end(),
                       [link](std::string_view scheme) { return hasAddress(link, scheme); });
}

void replaceTarget(std::string& link, std::string_view target, std::string_view with) {
    const std::string name(target);
    replaceIn(link, "target=" + name, with);
    replaceIn(link, "target=\"" + name + "\"", with);
    replaceIn(link, "target='" + name + "'", with);
}

/// Frames within the frame set are left for the whole window.
void takeWholeWindow(std::string& link) {
    replaceIn(link, "_self", "_top");
    replaceIn(link, "_parent", "_top");
}

/// Whether every attribute is written as `href=` with its value close behind: nearly all are.
bool isNormal(std::string_view link) {
    if (link.find('[') != text::npos || link.find('{') != text::npos) return false;
    for (std::size_t at = link.find('='); at != text::npos; at = link.find('=', at + 1)) {
        if ((at > 0 && link[at - 1] == ' ') || (at + 1 < link.size() && link[at + 1] == ' ')) return false;
    }
    return true;
}

/// Brings the notations of the attribute to one; returns whether the tag lies inside a script's string.
bool normalise(std::string& link) {
    if (isNormal(link)) return false;
    const bool escaped = text::contains(link, linkNotation::inScript);
    if (escaped) replaceIn(link, linkNotation::inScript, "href");
    replaceIn(link, linkNotation::unchosen, "href");
    replaceIn(link, "href =", "href=");
    replaceIn(link, "href= ", "href=");
    return escaped;
}

/// Keeps the browser's status bar clean.
std::string withoutStatus(std::string link, bool doubleQuoted) {
    if (link.empty() || text::contains(link, "onmouseover")) return link;
    const std::string_view status = doubleQuoted
                                        ? " onmouseover=\"window.status=top.torvex_empty;return true;\" >"
                                        : " onmouseover='window.status=top.torvex_empty;return true;' >";
    link.reserve(link.size() + status.size());
    for (std::size_t at = link.find('>'); at != text::npos; at = link.find('>', at + status.size())) {
        link.replace(at, 1, status);
    }
    return link;
}

}  // namespace

/// One start tag on its way.
struct LinkBuilder::Link {
    std::string tag;
    LinkTag kind;
    bool escaped;
    bool doubleQuoted = false;

    std::string_view from(std::size_t at) const { return std::string_view(tag).substr(at); }
    std::string_view ahead(std::size_t of) const { return std::string_view(tag).substr(0, of); }

    /// The tag when its target isn't there: an anchor goes, an area stays without an address.
    std::string dead(std::size_t begin, std::size_t end) const {
        if (kind == LinkTag::Anchor) return {};
        std::string area(ahead(begin));
        area.append(from(end));
        replaceIn(area, "href=\"\"", "");
        replaceIn(area, "href=''", "");
        return area;
    }

    /// A call of a function of the frame set in place of the address between `begin` and `end`.
    std::string call(std::size_t begin, std::size_t end, std::string_view function, const std::string& first,
                     const std::string& second) const {
        constexpr std::size_t attributeLength = 6;
        const std::string quote = std::string(escaped ? "\\" : "") + (doubleQuoted ? "'" : "\"");
        std::string result(ahead(begin - attributeLength));
        result.append(doubleQuoted ? "href=\"" : "href='").append("javascript:").append(function);
        result.append("(").append(quote).append(first).append(quote).append(",");
        result.append(quote).append(second).append(quote).append(")");
        return result.append(from(end));
    }
};

LinkBuilder::LinkBuilder(HostContext& host, db::Connection& connection, std::string site)
    : host_(host),
      connection_(connection),
      targets_(connection, host.clock.today()),
      site_(std::move(site)),
      frames_(host.application.isTrue(applicationKey::usesFrames)),
      checked_(host.application.isTrue(applicationKey::hyperlinkCheck)),
      defaultPage_(host.application.text(applicationKey::defaultPageId)) {}

void LinkBuilder::prepare(const std::vector<std::string>& startTags) try {
    std::vector<std::string> identifiers;
    std::string normal;
    for (const std::string& given : startTags) {
        const bool isGivenNormal = isNormal(given);
        if (!isGivenNormal) {
            normal = given;
            normalise(normal);
        }
        const std::string& tag = isGivenNormal ? given : normal;
        std::string_view identifier;
        if (const std::size_t page = findAddress(tag, linkNotation::page); page != text::npos) {
            const std::string_view rest = std::string_view(tag).substr(page + linkNotation::page.size());
            identifier = withoutQuotes(rest.substr(0, rest.find(')')));
        } else if (text::contains(tag, ".asp")) {
            const std::string_view behind = pageInAddress(tag).value_or(std::string_view());
            identifier = behind.substr(0, behind.find_first_of("\"' >"));
        }
        // A number needs a look only to be checked, or for its node.
        const bool needsLook = checked_ || frames_ || !text::isNumeric(identifier);
        if (!identifier.empty() && needsLook) identifiers.push_back(text::lowerTrim(identifier));
    }
    targets_.learn(identifiers);
} catch (...) {
    raiseFrom("makeLink !");
}

std::string LinkBuilder::rewrite(std::string startTag, LinkTag kind) try {
    host_.deadline().check();
    Link link{std::move(startTag), kind, false};
    link.escaped = normalise(link.tag);
    std::string built = build(link);
    return withoutStatus(std::move(built), link.doubleQuoted);
} catch (...) {
    raiseFrom("makeLink !");
}

std::string LinkBuilder::build(Link& link) {
    link.doubleQuoted = text::contains(link.tag, "href=\"");
    const bool mayBeNotation = link.tag.find('(') != std::string::npos;
    if (mayBeNotation && hasAddress(link.tag, linkNotation::page)) return buildPage(link);
    if (text::contains(link.tag, ".asp")) {
        for (const auto script : {pageScript, framesetScript}) {
            if (hasAddress(link.tag, script) || hasAddress(link.tag, script.substr(1))) {
                return buildAddressForm(link, script);
            }
        }
    }
    if (mayBeNotation && hasAddress(link.tag, linkNotation::file)) return buildFile(link);
    if (!leadsOutside(link.tag)) replaceIn(link.tag, "_parent", "_top");
    return std::move(link.tag);
}

/// A link written as an address of one of the two scripts.
std::string LinkBuilder::buildAddressForm(Link& link, std::string_view script) {
    const bool isFrameset = script == framesetScript;
    for (const char quote : {'"', '\''}) {
        const std::string attribute = std::string("href=") + quote;
        replaceIn(link.tag, attribute + std::string(script.substr(1)), attribute + std::string(script));
    }
    if (isFrameset) takeWholeWindow(link.tag);
    if (checked_ && !checkAddress(link, script)) return std::move(link.tag);
    if (frames_ && !isFrameset) {
        replaceIn(link.tag, pageScript, framesetScript);
        takeWholeWindow(link.tag);
    }
    if (!frames_ && isFrameset) replaceIn(link.tag, framesetScript, pageScript);
    return std::move(link.tag);
}

/// The address names a page afterwards, whatever else the tag holds.
void LinkBuilder::addDefaultPage(Link& link, std::string_view script, std::size_t begin,
                                 std::string_view address) {
    const std::string query = std::string(script) + "?";
    const std::string page = query + "pageId=" + defaultPage_;
    if (text::contains(address, query)) {
        replaceIn(link.tag, query, page + "&");
    } else if (text::contains(link.tag, query)) {
        link.tag.replace(begin, script.size(), page);
    } else {
        replaceIn(link.tag, script, page);
    }
}

/// Gives an address without a page the site's default page, and the page's number for its node. False when
/// the page isn't there; the tag is then the dead one.
bool LinkBuilder::checkAddress(Link& link, std::string_view script) {
    const std::size_t begin = findAddress(link.tag, script);
    const std::size_t end = link.tag.find(link.tag[begin - 1], begin);
    if (end == std::string::npos) return true;
    const std::string address = link.tag.substr(begin, end - begin);
    const auto named = pageInAddress(address);
    if (!named) {
        addDefaultPage(link, script, begin, address);
        return checkAddress(link, script);
    }
    const std::string identifier(*named);
    if (text::contains(identifier, markerStart)) return true;
    const std::string wanted = text::lowerTrim(identifier);
    if (!targets_.isOnline(wanted)) {
        link.tag = link.dead(begin, end);
        return false;
    }
    if (!text::isNumeric(wanted)) {
        replaceIn(link.tag, "pageId=" + identifier,
                  "pageId=" + text::fromNumber(targets_.identityOf(wanted).pageId));
    }
    return true;
}

std::string LinkBuilder::buildPage(Link& link) {
    // The names of all windows that a link may lead to begin with the same character.
    const bool namesWindow = link.tag.find('_') != std::string::npos;
    bool leaves = namesWindow && text::contains(link.tag, "_parent");
    if (leaves) replaceTarget(link.tag, "_parent", "target=_top");
    leaves =
        leaves || (namesWindow && (text::contains(link.tag, "_top") || text::contains(link.tag, "_blank")));
    const std::size_t begin = findAddress(link.tag, linkNotation::page);
    const std::size_t argument = begin + linkNotation::page.size();
    const std::size_t close = link.tag.find(')', begin);
    if (close == std::string::npos) return link.tag;
    const std::size_t end = close + 1;
    const std::string identifier =
        text::lowerTrim(withoutQuotes(std::string_view(link.tag).substr(argument, close - argument)));
    if (checked_ && text::contains(identifier, markerStart)) return link.tag;
    if (checked_ && !targets_.isOnline(identifier)) return link.dead(begin, end);
    const bool isNumber = text::isNumeric(identifier);
    const std::string number =
        isNumber ? identifier : text::fromNumber(targets_.identityOf(identifier).pageId);
    if (frames_ && !leaves)
        return link.call(begin, end, "top.page", number, scriptText(targets_.identityOf(identifier).nodeId));
    std::string address(frames_ ? framesetScript : pageScript);
    address.append("?pageId=").append(number);
    return std::move(link.tag.replace(begin, end - begin, address));
}

std::string LinkBuilder::buildFile(Link& link) {
    const bool popup = !text::contains(link.tag, "_self") && !text::contains(link.tag, "_top") &&
                       !text::contains(link.tag, "_parent");
    replaceIn(link.tag, "_parent", "_top");
    replaceTarget(link.tag, "_blank", "");
    const std::size_t begin = findAddress(link.tag, linkNotation::file);
    const std::size_t argument = begin + linkNotation::file.size();
    const std::size_t close = link.tag.find(')', begin);
    if (close == std::string::npos) return link.tag;
    const std::size_t end = close + 1;
    const std::string value = text::replaceAll(
        withoutQuotes(text::trim(std::string_view(link.tag).substr(argument, close - argument))), " ", "%20");
    const auto [site, wanted] = linkNotation::documentNamed(value, site_);
    if (text::contains(wanted, markerStart)) return link.tag;
    const std::string name = documentName(site, wanted);
    if (name.empty()) return link.dead(begin, end);
    if (popup) return link.call(begin, end, "top.popup", site, scriptText(name));
    std::string result(link.ahead(begin));
    result.append(host_.application.text(applicationKey::documentsUrl)).append(site).append("/").append(name);
    return result.append(link.from(end));
}

/// The file of a document that is given by its file name or its title; "" when there is none.
std::string LinkBuilder::documentName(const std::string& site, const std::string& value) {
    if (documentExists(site, value)) return value;
    const std::string name =
        linkNotation::documentOfTitle(connection_, site, text::replaceAll(value, "%20", " "));
    return !name.empty() && checked_ && !documentExists(site, name) ? std::string() : name;
}

/// The value stands as it goes into an address, with its blanks encoded.
bool LinkBuilder::documentExists(const std::string& site, const std::string& value) const {
    return !value.empty() && host_.files.fileExists(host_.application.text(applicationKey::documentsPath) +
                                                    site + "/" + text::replaceAll(value, "%20", " "));
}

std::string withRealLinks(HostContext& host, db::Connection& connection, std::string html,
                          const std::string& site) {
    if (!text::contains(html, "<a ") && !text::contains(html, "<area ")) return html;
    LinkBuilder builder(host, connection, site);
    return rewriteLinks(html, builder);
}

std::string cServer::buildLinks(const std::string& html, const std::string& site, const std::string& /*lang*/,
                                const std::string& /*mode*/) try {
    return withRealLinks(host_, connection(), html, site);
} catch (...) {
    raiseFrom("buildLinks !");
}

}  // namespace torvex
