#include "platform/net/Freshness.h"

#include <algorithm>
#include <charconv>
#include <curl/curl.h>
#include <optional>
#include <string>

#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::chrono::seconds longest = std::chrono::hours(24);

std::optional<std::chrono::seconds> secondsOf(std::string_view text) {
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') text = text.substr(1, text.size() - 2);
    std::int64_t number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    if (read.ec == std::errc::result_out_of_range) return longest;
    if (read.ec != std::errc() || read.ptr != text.data() + text.size() || number < 0) return std::nullopt;
    return std::chrono::seconds(std::min<std::int64_t>(number, longest.count()));
}

std::optional<std::chrono::seconds> momentOf(std::string_view text) {
    const time_t moment = curl_getdate(std::string(text).c_str(), nullptr);
    if (moment < 0) return std::nullopt;
    return std::chrono::seconds(moment);
}

struct Directives {
    bool isForbidden = false;
    bool mustAsk = false;  ///< once it isn't fresh any more
    std::optional<std::chrono::seconds> sharedAge;
    std::optional<std::chrono::seconds> age;
    std::optional<std::chrono::seconds> staleIfError;
};

void readDirective(std::string_view directive, Directives& read) {
    const std::size_t equals = std::min(directive.find('='), directive.size());
    const std::string name = text::lower(text::trim(directive.substr(0, equals)));
    const std::string_view value = text::trim(directive.substr(std::min(equals + 1, directive.size())));
    if (name == "no-store" || name == "private" || name == "no-cache") read.isForbidden = true;
    if (name == "must-revalidate" || name == "proxy-revalidate") read.mustAsk = true;
    // An age that can't be read is none.
    constexpr std::chrono::seconds none{0};
    if (name == "s-maxage") read.sharedAge = secondsOf(value).value_or(none);
    if (name == "max-age") read.age = secondsOf(value).value_or(none);
    if (name == "stale-if-error") read.staleIfError = secondsOf(value);
}

Directives directivesOf(std::string_view cacheControl) {
    Directives read;
    while (!cacheControl.empty()) {
        const std::size_t end = std::min(cacheControl.find(','), cacheControl.size());
        readDirective(cacheControl.substr(0, end), read);
        cacheControl.remove_prefix(std::min(end + 1, cacheControl.size()));
    }
    return read;
}

std::chrono::seconds untilExpiry(const FreshnessFields& fields, std::chrono::system_clock::time_point now) {
    const auto expires = fields.expires.empty() ? std::nullopt : momentOf(fields.expires);
    if (!expires) return {};
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now.time_since_epoch());
    return *expires - momentOf(fields.date).value_or(seconds);
}

}  // namespace

Freshness freshnessOf(const FreshnessFields& fields, std::chrono::system_clock::time_point now) {
    const Directives said = directivesOf(fields.cacheControl);
    if (said.isForbidden || fields.setsCookie || text::contains(fields.vary, "*")) return {};
    std::chrono::seconds fresh = said.sharedAge ? *said.sharedAge
                                 : said.age     ? *said.age
                                                : untilExpiry(fields, now);
    fresh -= secondsOf(text::trim(fields.age)).value_or(std::chrono::seconds(0));
    const bool mayBeStale = said.staleIfError && !said.mustAsk && !said.sharedAge;
    return {std::clamp(fresh, std::chrono::seconds(0), longest),
            mayBeStale ? *said.staleIfError : std::chrono::seconds(0)};
}

}  // namespace torvex
