#include "platform/xml/XslMessages.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <libxml/globals.h>
#include <libxml/xmlerror.h>
#include <libxslt/xsltInternals.h>
#include <libxslt/xsltutils.h>
#include <string_view>

#include "platform/text/Text.h"

namespace torvex {

namespace {

/// A stylesheet can say much in a loop; the first of it is enough.
constexpr std::size_t mostSaid = 8192;

std::string formatted(const char* format, va_list arguments) {
    std::array<char, 2048> text{};
    const int length = std::vsnprintf(text.data(), text.size(), format, arguments);
    if (length < 0) return {};
    return {text.data(), std::min(static_cast<std::size_t>(length), text.size() - 1)};
}

void toThreadsListener(void*, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::string text = formatted(format, arguments);
    va_end(arguments);
    xmlGenericError(xmlGenericErrorContext, "%s", text.c_str());
}

void append(std::string& said, const std::string& text) {
    if (said.size() < mostSaid) said += text;
}

std::string_view takeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

/// "runtime error: file ... line 5 element value-of" stands in front of each fault's own line.
bool isPlace(std::string_view line) {
    return (line.starts_with("runtime error") || line.starts_with("compilation error")) &&
           line.find(" line ") != std::string_view::npos;
}

std::string lineNumber(std::string_view place) {
    place.remove_prefix(place.find(" line ") + 6);
    return std::string(place.substr(0, place.find(' ')));
}

struct Fault {
    std::string line;
    std::string text;
};

Fault firstFault(std::string_view said) {
    while (!said.empty()) {
        const std::string_view place = takeLine(said);
        if (isPlace(place)) return {lineNumber(place), std::string(takeLine(said))};
    }
    return {};
}

/// An expression's fault is told by itself; the transformation only notices that there was one.
bool isOnlyNoticed(std::string_view fault) {
    return fault.starts_with("XPath evaluation") || fault.starts_with("Failed to evaluate");
}

std::string_view withoutFunctionName(std::string_view fault) {
    const std::size_t end = fault.find(": ");
    const bool named = fault.starts_with("xslt") || fault.starts_with("xmlXPath");
    return named && end != std::string_view::npos ? fault.substr(end + 2) : fault;
}

std::string asOneLine(std::string_view text) {
    std::string line = text::toValidUtf8(text);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
    return std::string(text::trim(line));
}

}  // namespace

void XslMessages::initialise() {
    xsltSetGenericErrorFunc(nullptr, &toThreadsListener);
}

XslMessages::XslMessages() : listenerBefore_(xmlGenericError), contextBefore_(xmlGenericErrorContext) {
    xmlSetGenericErrorFunc(this, &XslMessages::takeFromLibraries);
}

XslMessages::~XslMessages() {
    xmlSetGenericErrorFunc(contextBefore_, listenerBefore_);
}

void XslMessages::listenTo(_xsltTransformContext* context) {
    xsltSetTransformErrorFunc(context, this, &XslMessages::takeFromTransformation);
}

void XslMessages::takeFromLibraries(void* self, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    append(static_cast<XslMessages*>(self)->said_, formatted(format, arguments));
    va_end(arguments);
}

void XslMessages::takeFromTransformation(void* self, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::string text = formatted(format, arguments);
    va_end(arguments);
    auto* messages = static_cast<XslMessages*>(self);
    append(messages->transformSaid_, text);
    if (text != "\n") messages->lastSaid_ = std::move(text);
}

XmlError XslMessages::error(const std::string& otherwise) const {
    Fault fault = firstFault(transformSaid_.empty() ? said_ : transformSaid_);
    std::string_view saidByExpressions = said_;
    if (isOnlyNoticed(fault.text) && !said_.empty()) fault.text = takeLine(saidByExpressions);
    if (fault.text.empty()) fault.text = lastSaid_.empty() ? otherwise : lastSaid_;
    const std::string text = asOneLine(withoutFunctionName(fault.text));
    return {fault.line.empty() ? text : "line " + fault.line + ": " + text, -1};
}

}  // namespace torvex
