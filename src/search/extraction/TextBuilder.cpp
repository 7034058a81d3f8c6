#include "search/extraction/TextBuilder.h"

#include "platform/text/Charset.h"
#include "platform/text/Text.h"
#include "platform/text/Utf8.h"

namespace torvex::catalogue {

namespace {

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r') || c == '\0';
}

bool hasMark(std::string_view bytes) {
    return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF") ||
           bytes.starts_with("\xEF\xBB\xBF");
}

std::string fromMarked(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) return text::toValidUtf8(bytes.substr(3));
    const bool isLittle = bytes.starts_with("\xFF\xFE");
    return charset::decode(bytes.substr(2), isLittle ? "UTF-16LE" : "UTF-16BE");
}

}  // namespace

void TextBuilder::add(std::string_view text) {
    for (const char c : text) {
        if (isFull()) return;
        if (isBlank(c)) {
            hasBlank_ = true;
            continue;
        }
        if (!text_.empty() && hasGap_) {
            text_ += '\n';
        } else if (!text_.empty() && hasBlank_) {
            text_ += ' ';
        }
        hasGap_ = hasBlank_ = false;
        text_ += c;
    }
}

std::string TextBuilder::take() {
    // The last character may have been cut in two.
    if (isFull()) {
        while (!text_.empty() && utf8::isContinuation(text_.back())) text_.pop_back();
        if (!text_.empty() && !utf8::isAscii(text_.back())) text_.pop_back();
    }
    return text::isValidUtf8(text_) ? std::move(text_) : text::toValidUtf8(text_);
}

std::string oneLine(std::string_view text) {
    TextBuilder builder(longestColumn);
    builder.add(text);
    return builder.take();
}

std::string decodedText(std::string_view bytes) {
    if (hasMark(bytes)) return fromMarked(bytes);
    if (text::isValidUtf8(bytes)) return std::string(bytes);
    return charset::decode(bytes, "windows-1252");
}

}  // namespace torvex::catalogue
