#include "cli/StarterSite.h"

#include <algorithm>
#include <fmt/format.h>

#include "cli/UsageError.h"
#include "platform/text/Text.h"

namespace torvex::cli {

namespace {

constexpr std::size_t longestTitle = 100;

bool isCode(std::string_view code) {
    const auto fits = [](char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9'); };
    return code.size() == 2 && std::all_of(code.begin(), code.end(), fits);
}

void checkCode(std::string_view option, std::string_view code) {
    if (isCode(code)) return;
    throw UsageError(
        fmt::format("{} \"{}\": a code is two small letters or digits, such as \"en\"", option, code));
}

bool hasControlCharacter(std::string_view text) {
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; });
}

}  // namespace

void checkStarterSite(const NewWebsite& site) {
    checkCode("--site", site.site);
    checkCode("--lang", site.lang);
    if (text::trim(site.title).empty() || text::length(site.title) > longestTitle ||
        !text::isValidUtf8(site.title) || hasControlCharacter(site.title)) {
        throw UsageError(fmt::format("--title: a title is a text of 1 to {} characters", longestTitle));
    }
}

}  // namespace torvex::cli
