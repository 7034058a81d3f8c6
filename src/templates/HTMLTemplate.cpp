#include "templates/HTMLTemplate.h"

#include <algorithm>
#include <fmt/format.h>

#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/text/ScriptText.h"
#include "platform/text/Text.h"
#include "templates/EmailLinks.h"
#include "templates/Markers.h"

namespace torvex {

namespace {

std::string familyOf(const std::string& agent) {
    return text::contains(agent, "msie") || !text::contains(agent, "mozilla") ? "IE" : "NS";
}

bool isInternetExplorer(const Request& request) {
    return request.reduced("HTTP_USER_AGENT", familyOf) == "IE";
}

/// "row_i" stands for a family of blocks. A name that holds "_i" further ahead as well is taken as it stands.
bool namesFamily(std::string_view tag) {
    const std::size_t at = text::find(tag, "_i");
    return at != text::npos && at + 2 == tag.size();
}

std::string described(const char* what, std::string_view name) {
    return fmt::format("{} \"{}\"", what, text::htmlEncode(name));
}

std::string describedCustom(std::string_view beginTag, std::string_view endTag) {
    return described("Custom block", fmt::format("{}...{}", beginTag, endTag));
}

}  // namespace

HTMLTemplate::HTMLTemplate(HostContext& host) try
    : host_(host), browser_(isInternetExplorer(host.request) ? Browser::Ie : Browser::Ns) {
} catch (...) {
    raiseFrom("getBrowser (HTMLTemplate) !");
}

bool HTMLTemplate::load(const std::string& filename, TextFormat format) try {
    buffer_.clear();
    auto content = host_.files.readText(filename, format);
    if (!content) return false;
    buffer_ = std::move(*content);
    replaceAllBlocks(browser_ == Browser::Ie ? "NS" : "IE", "");
    return true;
} catch (...) {
    raiseFrom("Load (HTMLTemplate) !");
}

bool HTMLTemplate::save(const std::string& filename, bool unicode) try {
    std::string path = filename;
    std::replace(path.begin(), path.end(), '\\', '/');
    const std::string content = buffer_ + "\r\n";
    try {
        host_.files.writeText(path, content, unicode ? TextFormat::Unicode : TextFormat::Ansi);
    } catch (const Error&) {
        // It may be a text that the file's encoding can't hold; any other reason shows again now.
        host_.files.writeText(path, content, TextFormat::Unicode);
    }
    return true;
} catch (...) {
    raiseFrom("save !");
}

bool HTMLTemplate::blockExists(std::string_view tag) const try {
    return markers::findBlock(buffer_, markers::blockStart(tag), markers::blockEnd(tag)).has_value();
} catch (...) {
    raiseFrom("blockExists (HTMLTemplate) !");
}

std::string HTMLTemplate::extractBlock(std::string_view tag) const try {
    const auto block = markers::findBlock(buffer_, markers::blockStart(tag), markers::blockEnd(tag));
    if (!block) answerNotFound(described("Block", tag));
    return buffer_.substr(block->innerBegin, block->innerEnd - block->innerBegin);
} catch (...) {
    raiseFrom("extractBlock !");
}

std::string HTMLTemplate::extractCustomBlock(std::string_view beginTag, std::string_view endTag) const try {
    const auto block = markers::findBlock(buffer_, markers::tag(beginTag), markers::tag(endTag));
    if (!block) answerNotFound(describedCustom(beginTag, endTag));
    return buffer_.substr(block->innerBegin, block->innerEnd - block->innerBegin);
} catch (...) {
    raiseFrom("extractCustomBlock !");
}

void HTMLTemplate::replaceBlock(std::string_view tag, std::string_view text) try {
    const auto block = markers::findBlock(buffer_, markers::blockStart(tag), markers::blockEnd(tag));
    if (!block) answerNotFound(described("Block", tag));
    buffer_.replace(block->begin, block->end - block->begin, text);
} catch (...) {
    raiseFrom("replaceBlock !");
}

void HTMLTemplate::replaceCustomBlock(std::string_view beginTag, std::string_view endTag,
                                      std::string_view text) try {
    const auto block = markers::findBlock(buffer_, markers::tag(beginTag), markers::tag(endTag));
    if (!block) answerNotFound(describedCustom(beginTag, endTag));
    buffer_.replace(block->begin, block->end - block->begin, text);
} catch (...) {
    raiseFrom("replaceCustomBlock !");
}

void HTMLTemplate::replaceAllBlocks(std::string_view tag, std::string_view text) try {
    if (namesFamily(tag)) {
        markers::replaceNumberedBlocks(buffer_, tag.substr(0, tag.size() - 2), text);
    } else {
        markers::replaceBlocks(buffer_, tag, text);
    }
} catch (...) {
    raiseFrom("ReplaceAllBlocks (HTMLTemplate) !");
}

void HTMLTemplate::emailToLinks() try {
    if (buffer_.find('@') != std::string::npos) buffer_ = linkEmailAddresses(buffer_);
} catch (...) {
    raiseFrom("emailtoLinks (HTMLTemplate) !");
}

std::string HTMLTemplate::jsEncode(std::string_view text) const try { return scriptText(text); } catch (...) {
    raiseFrom("jsEncode !");
}

void HTMLTemplate::answerNotFound(const std::string& what) const {
    const std::string charset = host_.application.text(applicationKey::interfaceCharset);
    host_.response.contentType = "text/html";
    host_.response.charset = charset;
    host_.response.write(fmt::format(
        "<html><head><meta http-equiv=\"Content-Type\" content=\"text/html; charset={}\"></head><body>"
        "<div align=center><font size=2 color=#ff0000 face=Arial><br><br><br><b>{} not found !</b>"
        "</font></div></body></html>",
        text::htmlEncode(charset), what));
    host_.response.end();
}

}  // namespace torvex
