#include "pages/authors/HeldLogin.h"

#include <chrono>
#include <fmt/format.h>
#include <memory>

#include "pages/authors/AuthorsDocument.h"
#include "platform/DateTime.h"
#include "platform/HostContext.h"
#include "platform/Session.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/Vocabulary.h"

namespace torvex {

namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr double heldFromLabel = 4902;
constexpr double heldLabel = 4910;

constexpr std::string_view key = "torvex_typed_login";
constexpr std::chrono::minutes longest{2};

constexpr std::string_view selectHolder =
    "select ipAddress, date, time from TORVEX_LOGINS where username = ?";

struct KeptLogin final : SessionObject {
    KeptLogin(TypedLogin typed, SteadyClock::time_point moment) : login(std::move(typed)), at(moment) {}
    TypedLogin login;
    SteadyClock::time_point at;
};

/// An address that a filter has looked at is kept as twelve digits.
std::string readableAddress(std::string_view address) {
    constexpr std::size_t digits = 12;
    if (address.size() != digits || address.find_first_not_of("0123456789") != std::string_view::npos)
        return std::string(address);
    std::string readable;
    for (std::size_t at = 0; at < digits; at += 3)
        readable += fmt::format("{}{}", at > 0 ? "." : "", std::stoi(std::string(address.substr(at, 3))));
    return readable;
}

/// "9:12" for "09:12", with the day ahead unless it is today's.
std::string readableMoment(std::string_view day, std::string_view time, const DateTime& now) {
    if (time.empty()) return {};
    if (time.starts_with('0')) time.remove_prefix(1);
    constexpr std::size_t lengthOfDay = 8;
    if (day.size() != lengthOfDay || day == date8(now)) return std::string(time);
    return fmt::format("{}-{}-{} {}", day.substr(0, 4), day.substr(4, 2), day.substr(6), time);
}

}  // namespace

void keepTyped(HostContext& host, TypedLogin typed) {
    host.session.setObject(key, std::make_shared<KeptLogin>(std::move(typed), SteadyClock::now()));
}

std::optional<TypedLogin> takeTyped(HostContext& host) {
    const auto kept = std::dynamic_pointer_cast<const KeptLogin>(host.session.object(key));
    host.session.setObject(key, nullptr);
    if (!kept || SteadyClock::now() - kept->at > longest) return std::nullopt;
    return kept->login;
}

LoginHolder holderOf(db::Connection& connection, std::string_view username, const DateTime& now) {
    auto rows = connection.query(selectHolder, {text::lowerTrim(username)});
    if (!rows.next()) return {};
    return {readableAddress(text::trim(rows.text("ipAddress"))),
            readableMoment(text::trim(rows.text("date")), text::trim(rows.text("time")), now)};
}

std::string holderSentence(HostContext& host, db::Connection& connection, std::string_view language,
                           std::string_view username) {
    const auto words = vocabularyTexts(connection, language, {heldFromLabel, heldLabel});
    const auto [address, since] = holderOf(connection, username, host.clock.now());
    if (address.empty() || since.empty()) return words.at(heldLabel);
    return filled(filled(words.at(heldFromLabel), "address", address), "time", since);
}

}  // namespace torvex
