#include "operations/register/Conversion.h"

#include "operations/register/NeedLabels.h"
#include "platform/ShortInteger.h"
#include "platform/files/FileSystem.h"
#include "platform/text/Text.h"

namespace torvex::operations {

namespace {

constexpr std::size_t shownCharacters = 40;

std::string shown(const Value& given) {
    if (given.isGrid()) return "a grid";
    const std::string whole = given.toText();
    const std::string_view start = text::first(whole, shownCharacters);
    return '"' + std::string(start) + (start.size() < whole.size() ? "...\"" : "\"");
}

[[noreturn]] void refuse(std::string_view needed, int label, const Value& given) {
    throw ConversionError("must be " + std::string(needed) + ", not " + shown(given), label);
}

bool readsAsNumber(const Value& given) {
    if (given.isText()) return text::isNumeric(given.text());
    return given.isEmpty() || given.isNumber() || given.isBoolean();
}

double number(const Value& given) {
    if (!readsAsNumber(given)) refuse("a number", need::number, given);
    return given.toNumber();
}

double integer(const Value& given) {
    constexpr std::string_view needed = "a whole number from -32768 to 32767";
    if (!readsAsNumber(given)) refuse(needed, need::wholeNumber, given);
    const auto whole = shortInteger(given.toNumber());
    if (!whole) refuse(needed, need::wholeNumber, given);
    return *whole;
}

bool boolean(const Value& given) {
    if (given.isText() && text::equals(given.text(), "true")) return true;
    if (given.isText() && text::equals(given.text(), "false")) return false;
    if (!readsAsNumber(given)) refuse("true or false", need::boolean, given);
    return given.toNumber() != 0;
}

DateTime date(const Value& given) {
    if (given.isDate()) return given.date();
    DateTime moment;
    if (!given.isText() || !parseIso(given.text(), moment))
        refuse("a date (2026-06-15T12:00:00)", need::moment, given);
    return moment;
}

double textFormat(const Value& given) {
    const double format = readsAsNumber(given) ? given.toNumber() : 1;
    for (const auto known : {TextFormat::SystemDefault, TextFormat::Unicode, TextFormat::Ansi}) {
        if (format == static_cast<int>(known)) return format;
    }
    refuse("-2 (the system's encoding), -1 (Unicode) or 0 (ANSI)", need::textFormat, given);
}

}  // namespace

Value convert(const Value& given, ArgumentType type) {
    switch (type) {
        case ArgumentType::Text:
            if (given.isGrid()) refuse("a text", need::text, given);
            return given.toText();
        case ArgumentType::Number:
            return number(given);
        case ArgumentType::Integer:
            return integer(given);
        case ArgumentType::Boolean:
            return boolean(given);
        case ArgumentType::Date:
            return date(given);
        case ArgumentType::TextFormat:
            return textFormat(given);
    }
    throw Error("unknown argument type");
}

std::string_view typeName(ArgumentType type) {
    switch (type) {
        case ArgumentType::Text:
            return "text";
        case ArgumentType::Number:
            return "number";
        case ArgumentType::Integer:
            return "integer";
        case ArgumentType::Boolean:
            return "boolean";
        case ArgumentType::Date:
            return "date";
        case ArgumentType::TextFormat:
            return "text format";
    }
    return "";
}

}  // namespace torvex::operations
