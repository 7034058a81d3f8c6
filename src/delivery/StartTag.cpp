#include "delivery/StartTag.h"

#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view blanks = " \t\r\n\f";

std::size_t orEnd(std::size_t at, std::string_view text) {
    return at == text::npos ? text.size() : at;
}

struct Parsed {
    std::string_view name;
    StartTag::Attribute attribute;
    bool hasValue;
};

void readValue(std::string_view text, std::size_t at, Parsed& parsed) {
    auto& [begin, valueBegin, valueEnd, end, quote, isClosed] = parsed.attribute;
    isClosed = true;
    if (at < text.size() && (text[at] == '"' || text[at] == '\'')) {
        quote = text[at];
        valueBegin = at + 1;
        valueEnd = text.find(quote, valueBegin);
        isClosed = valueEnd != text::npos;
        if (!isClosed) valueEnd = orEnd(text.rfind('>'), text);
        end = isClosed ? valueEnd + 1 : valueEnd;
    } else {
        valueBegin = at;
        valueEnd = end = orEnd(text.find_first_of(" \t\r\n\f>", at), text);
    }
}

/// The attribute from `from` on; nothing at the end of the tag.
std::optional<Parsed> readAttribute(std::string_view text, std::size_t from) {
    const std::size_t name = text.find_first_not_of(" \t\r\n\f/", from);
    if (name == text::npos || text[name] == '>') return std::nullopt;
    const std::size_t nameEnd = orEnd(text.find_first_of(" \t\r\n\f=>", name + 1), text);
    Parsed parsed{text.substr(name, nameEnd - name), {from, nameEnd, nameEnd, nameEnd, 0, true}, false};
    const std::size_t equals = text.find_first_not_of(blanks, nameEnd);
    if (equals == text::npos || text[equals] != '=') return parsed;
    parsed.hasValue = true;
    readValue(text, orEnd(text.find_first_not_of(blanks, equals + 1), text), parsed);
    return parsed;
}

std::optional<Parsed> findAttribute(std::string_view text, std::string_view name) {
    std::size_t at = orEnd(text.find_first_of(blanks), text);
    while (const auto parsed = readAttribute(text, at)) {
        if (text::equals(parsed->name, name)) return parsed;
        at = parsed->attribute.end;
    }
    return std::nullopt;
}

}  // namespace

std::optional<StartTag::Attribute> StartTag::find(std::string_view name) const {
    const auto parsed = findAttribute(text_, name);
    if (!parsed || !parsed->hasValue) return std::nullopt;
    return parsed->attribute;
}

std::string_view StartTag::valueOf(const Attribute& attribute) const {
    return std::string_view(text_).substr(attribute.valueBegin, attribute.valueEnd - attribute.valueBegin);
}

void StartTag::remove(std::string_view name) {
    std::string kept;
    std::size_t copied = 0;
    std::size_t at = orEnd(text_.find_first_of(blanks), text_);
    while (const auto parsed = readAttribute(text_, at)) {
        at = parsed->attribute.end;
        if (!text::equals(parsed->name, name)) continue;
        kept.append(text_, copied, parsed->attribute.begin - copied);
        copied = at;
    }
    if (copied > 0) text_ = std::move(kept.append(text_, copied));
}

void StartTag::replace(std::size_t begin, std::size_t end, std::string_view with) {
    text_.replace(begin, end - begin, with);
}

void StartTag::finish(std::string_view text) {
    const std::size_t end = text_.rfind('>');
    if (end == text::npos) {
        text_.append(text);
    } else {
        text_.replace(end, 1, text);
    }
}

}  // namespace torvex
