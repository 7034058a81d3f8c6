#include "delivery/LinkMarking.h"

#include <algorithm>
#include <array>

#include "delivery/FeedSource.h"
#include "delivery/LinkNotation.h"
#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/db/Connection.h"
#include "platform/files/FileSystem.h"
#include "platform/text/ScriptText.h"
#include "platform/text/Text.h"
#include "records/Labels.h"
#include "records/Vocabulary.h"

namespace torvex {

namespace {

using linkNotation::markerStart;
using linkNotation::pageInAddress;
using linkNotation::withoutQuotes;

/// Whether the tag has its mark already; the marks of a link that can be followed leave no notation behind.
bool isMarked(std::string_view tag) {
    static constexpr std::array<std::string_view, 3> marks = {"window.status=top.torvex_pageNotFound",
                                                              "window.status=top.torvex_docNotFound",
                                                              "window.status=top.torvex_linkDisabled"};
    return std::any_of(marks.begin(), marks.end(),
                       [tag](std::string_view mark) { return tag.find(mark) != text::npos; });
}

bool isPageAddress(std::string_view value) {
    if (value.starts_with('/')) value.remove_prefix(1);
    return text::startsWith(value, linkNotation::pageScript.substr(1)) ||
           text::startsWith(value, linkNotation::framesetScript.substr(1));
}

bool leadsOutside(std::string_view value) {
    return std::any_of(linkNotation::outside.begin(), linkNotation::outside.end(),
                       [value](std::string_view scheme) { return text::startsWith(value, scheme); });
}

/// A value for a script's string in the address of a link. Browsers undo references and "%" there before the
/// script is read: a quote that comes to be then must not end the string either.
std::string scriptArgument(std::string_view value, char attributeQuote) {
    std::string argument = scriptText(value);
    for (const std::string_view reference : {"&#", "&quot;", "&apos;"}) {
        argument = text::replaceAll(argument, reference, "\\" + std::string(reference));
    }
    for (const std::string_view code : {"22", "27", "5C", "0A", "0D"}) {
        argument = text::replaceAll(argument, "%" + std::string(code), "%25" + std::string(code));
    }
    const bool isDouble = attributeQuote == '"';
    return text::replaceAll(argument, isDouble ? "\"" : "'", isDouble ? "&quot;" : "&#39;");
}

}  // namespace

/// One start tag on its way.
struct LinkMarking::Link {
    explicit Link(const std::string& given) : tag(normal(given, escaped)) {
        href = tag.find("href");
        if (href && href->isClosed && href->quote != 0) value = tag.valueOf(*href);
        quote = href && href->quote == '"' ? '"' : '\'';
    }

    static std::string normal(const std::string& given, bool& escaped) {
        escaped = text::contains(given, linkNotation::inScript);
        return escaped ? text::replaceAll(given, linkNotation::inScript, "href") : given;
    }

    /// What stands between the brackets of a notation; nothing when they don't close. An argument in the
    /// quotes of the attribute itself is part of the notation all the same.
    std::optional<std::string> argument(std::string_view notation) {
        const std::size_t begin = href->valueBegin + notation.size();
        const std::size_t close = tag.text().find(')', begin);
        if (close == std::string::npos) return std::nullopt;
        const std::size_t end = tag.text().find(href->quote, close);
        if (end == std::string::npos) return std::nullopt;
        href->valueEnd = end;
        return std::string(
            withoutQuotes(text::trim(std::string_view(tag.text()).substr(begin, close - begin))));
    }

    bool escaped = false;  ///< lies inside a script's string
    StartTag tag;
    std::optional<StartTag::Attribute> href;
    std::string value;  ///< of an address in quotes
    char quote;         ///< of what is put in
    bool isDone = false;
};

/// What is wrong with a link.
struct LinkMarking::Mark {
    double label;
    std::string_view status;  ///< the name of the text in the window's status bar
    bool isBad = true;        ///< shows in the look of the link
    bool isOff = true;        ///< can't be followed
};

LinkMarking::LinkMarking(HostContext& host, db::Connection& connection, LinkPlace place)
    : host_(host),
      connection_(connection),
      place_(std::move(place)),
      targets_(connection, place_.twin, host.clock.today()),
      pageScript_(host.application.isTrue(applicationKey::usesFrames) ? linkNotation::framesetScript
                                                                      : linkNotation::pageScript),
      defaultPage_(host.application.text(applicationKey::defaultPageId)) {}

/// Of the page that a link leads to; "" for one that leads to none.
std::string LinkMarking::identifierOf(const Link& link) const {
    if (!link.href) return {};
    if (text::startsWith(link.value, linkNotation::page)) {
        const auto argument = Link(link).argument(linkNotation::page);
        return argument ? text::lowerTrim(*argument) : std::string();
    }
    if (!isPageAddress(link.value)) return {};
    const std::string named = text::lowerTrim(pageInAddress(link.value).value_or(std::string_view()));
    return named.empty() && !text::contains(link.value, "pageId=") ? text::lowerTrim(defaultPage_) : named;
}

void LinkMarking::prepare(const std::vector<std::string>& startTags) try {
    std::vector<std::string> identifiers;
    for (const std::string& tag : startTags) {
        if (std::string identifier = identifierOf(Link(tag)); !identifier.empty())
            identifiers.push_back(std::move(identifier));
    }
    targets_.learn(identifiers);
} catch (...) {
    raiseFrom("makeLink !");
}

std::string LinkMarking::rewrite(std::string startTag, LinkTag /*kind*/) try {
    host_.deadline().check();
    const bool isChosen = !text::contains(startTag, linkNotation::unchosen);
    if (isMarked(startTag)) return startTag;
    if (isChosen && place_.twin == Twin::Design && text::contains(startTag, "editBody")) return startTag;
    Link link(startTag);
    if (isChosen) {
        build(link);
    } else {
        mark(link, {label::linkUnchosen, "torvex_linkDisabled", false});
    }
    if (!text::contains(link.tag.text(), "onmouseover")) {
        const std::string quote(1, link.quote);
        link.tag.finish(" onmouseover=" + quote + "window.status=top.torvex_empty;return true;" + quote +
                        ">");
    }
    return link.tag.text();
} catch (...) {
    raiseFrom("makeLink !");
}

void LinkMarking::build(Link& link) {
    if (link.value.empty()) return;
    const std::string identifier = identifierOf(link);
    if (text::startsWith(link.value, linkNotation::page)) {
        if (link.argument(linkNotation::page)) buildPage(link, identifier);
    } else if (isPageAddress(link.value)) {
        if (!identifier.empty() || text::contains(link.value, "pageId=")) buildPage(link, identifier);
    } else if (text::startsWith(link.value, linkNotation::file)) {
        buildFile(link);
    } else if (leadsOutside(link.value)) {
        call(link, "top.viewLink", {link.value});
    } else if (auto target = link.tag.find("target");
               target && text::equals(link.tag.valueOf(*target), "_parent")) {
        link.tag.replace(target->valueBegin, target->valueEnd, "_top");
    }
}

void LinkMarking::buildPage(Link& link, const std::string& identifier) {
    if (text::contains(identifier, markerStart)) return;
    const PreviewTarget& target = targets_.of(identifier);
    if (target.state == PreviewTarget::State::Missing) {
        return mark(link, {label::pageNotFound, "torvex_pageNotFound"});
    }
    const std::string number = text::fromNumber(target.pageId);
    if (text::equals(siteOf(target.nodeId), text::trim(place_.site)) &&
        text::equals(langOf(target.nodeId), text::trim(place_.lang))) {
        call(link, "top.page", {number});
    } else {
        call(link, "top.viewLink", {pageScript_ + "?pageId=" + number});
    }
    if (target.state == PreviewTarget::State::Offline) {
        mark(link, {label::pageOffline, "torvex_pageOffline", true, false});
    }
}

void LinkMarking::buildFile(Link& link) {
    const auto argument = link.argument(linkNotation::file);
    if (!argument) return;
    const auto [site, title] = linkNotation::documentNamed(*argument, place_.site);
    if (text::contains(title, markerStart)) return;
    const std::string name = documentName(site, text::replaceAll(title, "%20", " "));
    if (name.empty()) return mark(link, {label::documentNotFound, "torvex_docNotFound"});
    const std::string path = host_.application.text(applicationKey::documentsUrl) + site + "/" + name;
    call(link, "top.popup", {text::replaceAll(path, " ", "%20"), title});
}

/// The file of a document that is given by its file name or its title; "" when there is none.
std::string LinkMarking::documentName(const std::string& site, const std::string& name) {
    const auto exists = [&](const std::string& file) {
        const std::string path = file.empty() ? std::string() : feeds::filePath(host_, site, file);
        return !path.empty() && host_.files.fileExists(path);
    };
    if (exists(name)) return name;
    std::string file = linkNotation::documentOfTitle(connection_, site, name);
    return exists(file) ? file : std::string();
}

/// A call of a function of the interface in place of the address. A window of the link's own would only show
/// the call.
void LinkMarking::call(Link& link, std::string_view function,
                       std::initializer_list<std::string_view> arguments) const {
    const std::string quote = std::string(link.escaped ? "\\" : "") + (link.quote == '"' ? '\'' : '"');
    std::string address = "javascript:" + std::string(function) + "(";
    for (const std::string_view argument : arguments) {
        if (address.back() != '(') address += ',';
        address.append(quote).append(scriptArgument(argument, link.quote)).append(quote);
    }
    link.tag.replace(link.href->valueBegin, link.href->valueEnd, address + ")");
    link.tag.remove("target");
}

/// What the tag says of these itself would hide the mark.
void LinkMarking::mark(Link& link, const Mark& mark) {
    for (const char* name : {"alt", "title", "onmouseover", "onmouseout"}) link.tag.remove(name);
    if (mark.isBad) link.tag.remove("class");
    if (mark.isOff) link.tag.remove("onclick");
    const std::string q(1, link.quote);
    const std::string shown = word(mark.label);
    std::string marks = mark.isBad ? " class=" + q + "badLink" + q : std::string();
    marks += " alt=" + q + shown + q + " title=" + q + shown + q;
    if (mark.isBad) marks += " ";
    if (mark.isOff) marks += " onClick=" + q + "return false;" + q;
    marks.append(" onmouseover=").append(q).append("window.status=top.").append(mark.status);
    marks.append(";return true").append(q);
    link.tag.finish(marks + " onmouseout=" + q + "window.status=top.torvex_empty;return true" + q + " >");
}

/// In the interface language, encoded for either kind of quote.
std::string LinkMarking::word(double label) {
    if (words_.empty()) {
        words_ = vocabularyTexts(
            connection_, host_.session.text(sessionKey::interfaceLanguage),
            {label::pageNotFound, label::documentNotFound, label::pageOffline, label::linkUnchosen});
    }
    return text::replaceAll(text::htmlEncode(words_[label]), "'", "&#39;");
}

std::string withMarkedLinks(HostContext& host, db::Connection& connection, std::string html,
                            const LinkPlace& place) {
    if (!text::contains(html, "<a ") && !text::contains(html, "<area ")) return html;
    LinkMarking marking(host, connection, place);
    return rewriteLinks(html, marking);
}

}  // namespace torvex
