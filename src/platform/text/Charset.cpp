#include "platform/text/Charset.h"

#include <memory>
#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>
#include <unicode/ucnv_err.h>

#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "platform/text/Utf8.h"

namespace torvex::charset {

namespace {

// Opening costs well under a microsecond once the library has the table of an encoding in memory, and a
// converter is not safe to share between threads. So each call opens its own.
struct Close {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, Close>;

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view utf16LittleMark = "\xFF\xFE";
constexpr std::string_view utf16BigMark = "\xFE\xFF";

/// Nothing when there is no encoding of that name.
Converter open(std::string_view label) {
    const std::string name(text::trim(label));
    if (name.empty() || name.find('\0') != std::string::npos) return nullptr;
    UErrorCode status = U_ZERO_ERROR;
    Converter converter(ucnv_open(name.c_str(), &status));
    return U_SUCCESS(status) ? std::move(converter) : nullptr;
}

/// Browsers show and send windows-1252 where a page says that it is in ISO 8859-1, so that is what comes
/// back.
Converter openForReading(std::string_view label) {
    Converter converter = open(label);
    if (converter && ucnv_getType(converter.get()) == UCNV_LATIN_1) return open("windows-1252");
    return converter;
}

bool isUtf8(const UConverter* converter) {
    return ucnv_getType(converter) == UCNV_UTF8;
}

std::int32_t lengthOf(std::string_view text) {
    constexpr std::size_t most = 0x7FFFFFFF;
    if (text.size() > most) throw Error("a text of more than 2 GB can't be converted");
    return static_cast<std::int32_t>(text.size());
}

/// `convert` fills a buffer and gives the length needed; it is asked again where that is more.
template <typename Convert>
std::string converted(std::string_view text, Convert convert) {
    std::string result(text.size() + text.size() / 8 + 16, '\0');
    for (;;) {
        UErrorCode status = U_ZERO_ERROR;
        const std::int32_t length = convert(result.data(), lengthOf(result), &status);
        if (U_FAILURE(status) && status != U_BUFFER_OVERFLOW_ERROR) {
            throw Error(std::string("a text can't be converted: ") + u_errorName(status));
        }
        result.resize(static_cast<std::size_t>(length));
        if (status != U_BUFFER_OVERFLOW_ERROR) return result;
    }
}

std::string fromUtf8(UConverter* converter, std::string_view utf8) {
    return converted(utf8, [&](char* target, std::int32_t room, UErrorCode* status) {
        return ucnv_fromAlgorithmic(converter, UCNV_UTF8, target, room, utf8.data(), lengthOf(utf8), status);
    });
}

std::string toUtf8(UConverter* converter, std::string_view bytes) {
    return converted(bytes, [&](char* target, std::int32_t room, UErrorCode* status) {
        return ucnv_toAlgorithmic(UCNV_UTF8, converter, target, room, bytes.data(), lengthOf(bytes), status);
    });
}

void writeReferencesForTheMissing(UConverter* converter) {
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setFromUCallBack(converter, UCNV_FROM_U_CALLBACK_ESCAPE, UCNV_ESCAPE_XML_DEC, nullptr, nullptr,
                          &status);
    ucnv_setFallback(converter, false);
}

/// The library's own substitute is a control character for some encodings.
void writeReplacement(const void*, UConverterToUnicodeArgs* arguments, const char*, std::int32_t,
                      UConverterCallbackReason reason, UErrorCode* status) {
    constexpr UChar replacement = 0xFFFD;
    if (reason > UCNV_IRREGULAR) return;
    *status = U_ZERO_ERROR;
    ucnv_cbToUWriteUChars(arguments, &replacement, 1, 0, status);
}

void writeReplacementsForTheBroken(UConverter* converter) {
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setToUCallBack(converter, writeReplacement, nullptr, nullptr, nullptr, &status);
}

std::string decodeUtf16(std::string_view bytes, const char* name) {
    return toUtf8(open(name).get(), bytes);
}

std::size_t firstBadByte(std::string_view bytes) {
    std::size_t at = 0;
    while (at < bytes.size()) {
        const utf8::Unit unit = utf8::unitAt(bytes, at);
        if (unit.value >= utf8::brokenByte) break;
        at += unit.length;
    }
    return at;
}

/// `before` are the bytes of the file in front of these.
std::string checkedUtf8(std::string_view bytes, std::size_t before) {
    if (text::isValidUtf8(bytes)) return std::string(bytes);
    throw Error("the text isn't UTF-8: bad byte at offset " + std::to_string(before + firstBadByte(bytes)));
}

}  // namespace

bool isKnown(std::string_view label) {
    return open(label) != nullptr;
}

std::string encodeForHtml(std::string_view utf8, std::string_view label) {
    const Converter converter = open(label);
    if (!converter || isUtf8(converter.get())) return std::string(utf8);
    writeReferencesForTheMissing(converter.get());
    return fromUtf8(converter.get(), utf8);
}

std::string decode(std::string_view bytes, std::string_view label) {
    const Converter converter = openForReading(label);
    if (!converter || isUtf8(converter.get())) return text::toValidUtf8(bytes);
    writeReplacementsForTheBroken(converter.get());
    return toUtf8(converter.get(), bytes);
}

std::string toUtf16File(std::string_view utf8) {
    return fromUtf8(open("UTF-16LE").get(), utf8).insert(0, utf16LittleMark);
}

std::string decodeFile(std::string_view bytes, bool assumeUtf16) {
    if (bytes.starts_with(utf8Mark)) return checkedUtf8(bytes.substr(utf8Mark.size()), utf8Mark.size());
    if (bytes.starts_with(utf16LittleMark)) return decodeUtf16(bytes.substr(2), "UTF-16LE");
    if (bytes.starts_with(utf16BigMark)) return decodeUtf16(bytes.substr(2), "UTF-16BE");
    return assumeUtf16 ? decodeUtf16(bytes, "UTF-16LE") : checkedUtf8(bytes, 0);
}

}  // namespace torvex::charset
