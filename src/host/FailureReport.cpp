#include "host/FailureReport.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <sodium.h>

#include "host/LineLog.h"
#include "host/http/Exchange.h"
#include "pages/PageRoute.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/text/LogText.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::array<std::string_view, 4> secretNames{"pass", "pwd", "token", "secret"};

std::string newReference() {
    return fmt::format("{:04X}-{:04X}", randombytes_random() & 0xffffU, randombytes_random() & 0xffffU);
}

/// Asked of the name as a page reads it, escapes undone.
bool isSecret(std::string_view name) {
    const std::string read = text::toValidUtf8(text::urlDecode(name));
    return std::any_of(secretNames.begin(), secretNames.end(),
                       [&](std::string_view part) { return text::contains(read, part); });
}

std::string heldText(const Session& session, std::string_view key) {
    const Value value = session.get(key);
    return value.isText() ? value.text() : std::string();
}

std::string login(const Session& session) {
    const std::string author = heldText(session, sessionKey::authorName);
    const std::string name = author.empty() ? heldText(session, sessionKey::visitorName) : author;
    return name.empty() ? "nobody" : name;
}

/// What answers the request, and its outermost operation: neither is the visitor's to choose.
std::string kindOf(const Exchange& exchange, std::string_view error) {
    const std::string place = exchange.page    ? exchange.page->path
                              : exchange.guard ? exchange.guard->folder
                                               : "";
    return place + ' ' + std::string(error.substr(0, error.find('\n')));
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
    const std::string query = forLog(withoutSecrets(exchange.target.query));
    line_ = fmt::format("request failed: reference {}, {} {}{}{}, login {}: {}", reference_,
                        forLog(exchange.head().methodText), forLog(exchange.target.path),
                        query.empty() ? "" : "?", query, forLog(login(session)), chainForLog(error));
    kind_ = kindOf(exchange, error);
}

void FailureReport::write(LineLog& log) const {
    log.failure(kind_, line_);
}

}  // namespace torvex
