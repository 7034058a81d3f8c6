#include "records/SiteCodes.h"

#include <algorithm>

#include "platform/text/Text.h"

namespace torvex {

namespace {

bool isUnsafe(char c) {
    return c == '/' || c == '\\' || c == '.' || static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
}

}  // namespace

std::string siteCode(std::string_view given) {
    std::string code = text::lowerTrim(given);
    if (text::length(code) == 1) code.insert(0, "0");
    return code;
}

bool hasCodeLength(std::string_view code) {
    return text::length(code) == 2;
}

bool isSafeCode(std::string_view code) {
    return !code.empty() && text::isValidUtf8(code) && std::none_of(code.begin(), code.end(), isUnsafe);
}

bool isCode(std::string_view code) {
    return hasCodeLength(code) && isSafeCode(code);
}

}  // namespace torvex
