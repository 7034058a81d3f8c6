#include "delivery/LinkTargets.h"

#include <algorithm>
#include <span>

#include "delivery/PageRecord.h"
#include "delivery/cServer.h"
#include "platform/Text.h"
#include "platform/db/Connection.h"

namespace torvex {

namespace {

// Lists are filled up to this length by repeating their last value, so that one prepared statement serves
// every page.
constexpr std::size_t listLength = 32;

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

void removeRepeated(std::vector<std::string>& values) {
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
}

}  // namespace

void LinkTargets::learn(const std::vector<std::string>& identifiers) {
    std::vector<std::string> wanted;
    for (const auto& identifier : identifiers) {
        if (!identities_.contains(identifier)) wanted.push_back(identifier);
    }
    if (wanted.empty()) return;
    removeRepeated(wanted);
    learnIdentities(wanted);
    std::vector<std::string> nodes;
    for (const auto& identifier : wanted) nodes.push_back(identities_[identifier].nodeId);
    removeRepeated(nodes);
    learnState(nodes);
}

void LinkTargets::learnIdentities(const std::vector<std::string>& identifiers) {
    static const std::string byNumber =
        withList("select pageId, nodeId from TORVEX_PAGES_DESIGN where pageId");
    static const std::string byNode = withList("select pageId, nodeId from TORVEX_PAGES_DESIGN where nodeId");
    std::vector<db::Parameter> numbers;
    std::vector<db::Parameter> nodes;
    std::map<double, std::string> spelling;
    for (const auto& identifier : identifiers) {
        if (text::isNumeric(identifier)) {
            const double number = text::toNumber(identifier);
            identities_[identifier] = {number, ""};
            numbers.emplace_back(number);
        } else {
            identities_[identifier] = {-1, identifier};
            nodes.emplace_back(std::string_view(identifier));
        }
    }
    std::map<double, std::string> nodeOfNumber;
    forEachRow(connection_, byNumber, numbers,
               [&](const db::Rows& rows) { nodeOfNumber[rows.number("pageId")] = rows.text("nodeId"); });
    std::map<std::string, double, std::less<>> numberOfNode;
    forEachRow(connection_, byNode, nodes, [&](const db::Rows& rows) {
        numberOfNode[text::lower(rows.text("nodeId"))] = rows.number("pageId");
    });
    for (const auto& identifier : identifiers) {
        PageIdentity& identity = identities_[identifier];
        if (identity.nodeId.empty()) {
            if (const auto found = nodeOfNumber.find(identity.pageId); found != nodeOfNumber.end()) {
                identity.nodeId = found->second;
            }
        } else if (const auto found = numberOfNode.find(identifier); found != numberOfNode.end()) {
            identity.pageId = found->second;
        }
    }
}

void LinkTargets::learnState(const std::vector<std::string>& nodeIds) {
    static const std::string states =
        withList("select nodeId, type, online, onlineFrom, onlineTo from TORVEX_PAGES_LIVE where nodeId");
    std::vector<db::Parameter> nodes;
    for (const auto& node : nodeIds) {
        if (node.size() < PageIdentity::rootLength) continue;
        online_[text::lower(node)] = false;
        nodes.emplace_back(std::string_view(node));
    }
    forEachRow(connection_, states, nodes, [this](const db::Rows& rows) {
        const std::string node = text::lower(rows.text("nodeId"));
        if (text::equals(text::trim(rows.text("type")), "F")) {
            online_.erase(node);
        } else {
            online_[node] =
                isOnlineOn(today_, rows.number("online"), rows.text("onlineFrom"), rows.text("onlineTo"));
        }
    });
}

bool LinkTargets::isOnline(const std::string& identifier) {
    const auto known = identities_.find(identifier);
    if (known == identities_.end()) return server_.isPage(identifier);
    const std::string node = text::lower(known->second.nodeId);
    if (node.size() < PageIdentity::rootLength) return false;
    const auto state = online_.find(node);
    return state != online_.end() ? state->second : server_.isPage(identifier);
}

PageIdentity LinkTargets::identityOf(const std::string& identifier) {
    const auto known = identities_.find(identifier);
    return known != identities_.end() ? known->second : identify(connection_, identifier);
}

}  // namespace torvex
