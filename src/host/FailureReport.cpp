#include "host/FailureReport.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <sodium.h>
#include <spdlog/logger.h>

#include "host/LineLog.h"
#include "host/http/Ascii.h"
#include "host/http/Exchange.h"
#include "platform/Session.h"

namespace torvex {

namespace {

constexpr std::array<std::string_view, 4> secretNames{"pass", "pwd", "token", "secret"};

std::string newReference() {
    return fmt::format("{:04X}-{:04X}", randombytes_random() & 0xffffU, randombytes_random() & 0xffffU);
}

bool isSecret(std::string_view name) {
    const std::string lowered = ascii::lowered(name);
    return std::any_of(secretNames.begin(), secretNames.end(),
                       [&](std::string_view part) { return lowered.find(part) != std::string::npos; });
}

std::string heldText(const Session& session, std::string_view key) {
    const Value value = session.get(key);
    return value.isText() ? value.text() : std::string();
}

std::string login(const Session& session) {
    const std::string author = heldText(session, "torvex_username");
    const std::string name = author.empty() ? heldText(session, "tvx_username") : author;
    return name.empty() ? "nobody" : name;
}

}  // namespace

std::string withoutSecrets(std::string_view query) {
    std::string result;
    while (!query.empty()) {
        const std::size_t end = std::min(query.find('&'), query.size());
        const std::string_view item = query.substr(0, end);
        query.remove_prefix(std::min(end + 1, query.size()));
        if (!result.empty()) result += '&';
        const std::string_view name = item.substr(0, item.find('='));
        result.append(isSecret(name) ? std::string(name) + "=..." : std::string(item));
    }
    return result;
}

FailureReport::FailureReport(const Exchange& exchange, const Session& session, std::string_view error)
    : reference_(newReference()) {
    const std::string query = withoutSecrets(exchange.target.query);
    line_ = fmt::format("request failed: reference {}, {} {}{}{}, login {}: {}", reference_,
                        exchange.head().methodText, oneLine(exchange.target.path), query.empty() ? "" : "?",
                        query, oneLine(login(session)), oneLine(error));
}

void FailureReport::write(spdlog::logger& log) const {
    log.error(line_);
}

}  // namespace torvex
