#include "delivery/LinkTargets.h"

#include <algorithm>
#include <span>

#include "delivery/OnlineState.h"
#include "delivery/PageRecord.h"
#include "platform/Text.h"
#include "platform/db/Connection.h"

namespace torvex {

namespace {

// Lists are filled up to this length by repeating their last value, so that one prepared statement serves
// every page.
constexpr std::size_t listLength = 32;

// Whether a page shows is asked for by its node, which the design tables give: so the two are joined by it.
constexpr std::string_view selectByNumber =
    "select d.pageId, d.nodeId, l.nodeId as liveNode, l.type, l.online, l.onlineFrom, l.onlineTo "
    "from TORVEX_PAGES_DESIGN d left outer join TORVEX_PAGES_LIVE l on l.nodeId = d.nodeId where d.pageId";
constexpr std::string_view selectNumbers = "select pageId, nodeId from TORVEX_PAGES_DESIGN where nodeId";
constexpr std::string_view selectStates =
    "select nodeId, nodeId as liveNode, type, online, onlineFrom, onlineTo from TORVEX_PAGES_LIVE where "
    "nodeId";

std::string withList(std::string_view statement) {
    std::string result(statement);
    result += " in (?";
    for (std::size_t i = 1; i < listLength; ++i) result += ",?";
    return result + ")";
}

/// Runs `statement` for all values, a list at a time, and hands every row to `take`.
template <typename Take>
void forEachRow(db::Connection& connection, const std::string& statement,
                std::span<const db::Parameter> values, Take take) {
    for (std::size_t from = 0; from < values.size(); from += listLength) {
        const auto part = values.subspan(from, std::min(listLength, values.size() - from));
        std::vector<db::Parameter> list(part.begin(), part.end());
        list.resize(listLength, list.back());
        auto rows = connection.query(statement, list);
        while (rows.next()) take(rows);
    }
}

}  // namespace

void LinkTargets::learn(const std::vector<std::string>& identifiers) {
    std::vector<std::string> numbers;
    std::vector<std::string> nodes;
    for (const auto& identifier : identifiers) {
        if (!targets_.try_emplace(identifier).second || identifier.size() > PageIdentity::longestNode)
            continue;
        (text::isNumeric(identifier) ? numbers : nodes).push_back(identifier);
    }
    learnNumbers(numbers);
    learnNodes(nodes);
}

void LinkTargets::learnNumbers(const std::vector<std::string>& identifiers) {
    static const std::string statement = withList(selectByNumber);
    std::multimap<double, Target*> wanted;
    std::vector<db::Parameter> values;
    for (const auto& identifier : identifiers) {
        Target& target = targets_[identifier];
        target.identity.pageId = text::toNumber(identifier);
        wanted.emplace(target.identity.pageId, &target);
        values.emplace_back(target.identity.pageId);
    }
    forEachRow(connection_, statement, values, [&](const db::Rows& rows) {
        const auto [first, last] = wanted.equal_range(rows.number("pageId"));
        for (auto entry = first; entry != last; ++entry) {
            entry->second->identity.nodeId = rows.text("nodeId");
            takeState(*entry->second, rows);
        }
    });
}

void LinkTargets::learnNodes(const std::vector<std::string>& identifiers) {
    static const std::string numbers = withList(selectNumbers);
    static const std::string states = withList(selectStates);
    std::vector<db::Parameter> values;
    for (const auto& identifier : identifiers) {
        targets_[identifier].identity = {-1, identifier};
        values.emplace_back(std::string_view(identifier));
    }
    // A row may answer an identifier in another spelling; that one makes no target of the row's.
    forEachRow(connection_, numbers, values, [this](const db::Rows& rows) {
        const auto target = targets_.find(text::lower(rows.text("nodeId")));
        if (target != targets_.end()) target->second.identity.pageId = rows.number("pageId", -1);
    });
    forEachRow(connection_, states, values, [this](const db::Rows& rows) {
        const auto target = targets_.find(text::lower(rows.text("nodeId")));
        if (target != targets_.end()) takeState(target->second, rows);
    });
}

/// A node too short to be one is never asked for.
void LinkTargets::takeState(Target& target, const db::Rows& rows) const {
    if (rows.isNull("liveNode") || target.identity.nodeId.size() < PageIdentity::rootLength) return;
    if (text::equals(text::trim(rows.view("type")), "F")) {
        target.state = State::Folder;
    } else if (isOnlineOn(today_, rows.number("online"), rows.view("onlineFrom"), rows.view("onlineTo"))) {
        target.state = State::Online;
    }
}

LinkTargets::Target& LinkTargets::targetOf(const std::string& identifier) {
    if (const auto known = targets_.find(identifier); known != targets_.end()) return known->second;
    learn({identifier});
    return targets_[identifier];
}

bool LinkTargets::isOnline(const std::string& identifier) {
    Target& target = targetOf(identifier);
    if (target.state == State::Folder) {
        const bool shows = isNodeOnline(connection_, target.identity.nodeId, today_);
        target.state = shows ? State::Online : State::Offline;
    }
    return target.state == State::Online;
}

const PageIdentity& LinkTargets::identityOf(const std::string& identifier) {
    return targetOf(identifier).identity;
}

}  // namespace torvex
