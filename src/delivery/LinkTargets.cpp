#include "delivery/LinkTargets.h"

#include <algorithm>

#include "delivery/OnlineState.h"
#include "platform/db/ScopeMemory.h"
#include "platform/db/ValueList.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"
#include "records/PageKind.h"

namespace torvex {

namespace {

// Whether a page shows is asked for by its node, which the design tables give. Nearly always the live page of
// the same number has that node, and then it is the answer. Written as a cross join, since SQLite takes the
// tables of one in their order; it then runs through the numbers without putting them into a table first.
constexpr std::string_view selectByNumber =
    "select d.pageId, d.nodeId, l.nodeId as liveNode, l.type, l.online, l.onlineFrom, l.onlineTo "
    "from wanted w cross join TORVEX_PAGES_DESIGN d "
    "left outer join TORVEX_PAGES_LIVE l on l.pageId = d.pageId where d.pageId = w.pageId";
constexpr std::string_view selectNumbers = "select pageId, nodeId from TORVEX_PAGES_DESIGN where nodeId";
constexpr std::string_view selectStates =
    "select nodeId, type, online, onlineFrom, onlineTo from TORVEX_PAGES_LIVE where nodeId";

}  // namespace

void LinkTargets::learn(const std::vector<std::string>& identifiers) {
    std::vector<std::string_view> numbers;
    std::vector<std::string_view> nodes;
    for (const auto& identifier : identifiers) {
        if (!targets_.try_emplace(identifier).second || identifier.size() > PageIdentity::longestNode)
            continue;
        (text::isNumeric(identifier) ? numbers : nodes).push_back(identifier);
    }
    learnNumbers(numbers);
    learnNodes(nodes);
}

void LinkTargets::learnNumbers(const std::vector<std::string_view>& identifiers) {
    if (identifiers.empty()) return;
    std::vector<Target*> wanted;
    for (const auto identifier : identifiers) {
        Target& target = targets_.find(identifier)->second;
        target.identity.pageId = text::toNumber(identifier);
        wanted.push_back(&target);
    }
    // Several spellings may stand for one number.
    std::sort(wanted.begin(), wanted.end(), [](const Target* left, const Target* right) {
        return left->identity.pageId < right->identity.pageId;
    });
    // The links of a page are mostly those that it had before.
    std::string key = "links " + today_;
    for (const Target* target : wanted) key.append(1, ' ').append(text::fromNumber(target->identity.pageId));
    const std::string known = db::rememberedWhileUnchanged(connection_, key, [&] {
        askForNumbers(wanted);
        return written(wanted);
    });
    read(known, wanted);
}

void LinkTargets::askForNumbers(const std::vector<Target*>& wanted) {
    static const std::string statement =
        "with wanted (pageId) as (values " + db::placesOfList("(?)") + ") " + std::string(selectByNumber);
    constexpr PageId noPage = -1;
    std::vector<db::Parameter> values;
    for (const Target* target : wanted) values.emplace_back(target->identity.pageId);
    std::vector<Target*> moved;
    db::forEachRow(connection_, statement, values, noPage, [&](const db::Rows& rows) {
        const PageId pageId = rows.number("pageId");
        auto found = std::lower_bound(
            wanted.begin(), wanted.end(), pageId,
            [](const Target* target, PageId number) { return target->identity.pageId < number; });
        for (; found != wanted.end() && (*found)->identity.pageId == pageId; ++found) {
            Target* const target = *found;
            target->identity.nodeId = rows.text("nodeId");
            if (text::equals(rows.view("liveNode"), target->identity.nodeId)) {
                takeState(*target, rows);
            } else {
                moved.push_back(target);
            }
        }
    });
    learnStates(moved);
}

/// For each a letter for its state, its node and a zero.
std::string LinkTargets::written(const std::vector<Target*>& targets) {
    std::string all;
    for (const Target* target : targets) {
        all.append(1, target->state == State::Online ? 'o' : target->state == State::Folder ? 'f' : '-');
        all.append(target->identity.nodeId).append(1, '\0');
    }
    return all;
}

void LinkTargets::read(std::string_view known, const std::vector<Target*>& targets) {
    for (Target* target : targets) {
        const std::size_t end = known.find('\0');
        const char state = known.front();
        target->state = state == 'o' ? State::Online : state == 'f' ? State::Folder : State::Offline;
        target->identity.nodeId = known.substr(1, end - 1);
        known.remove_prefix(end + 1);
    }
}

void LinkTargets::learnNodes(const std::vector<std::string_view>& identifiers) {
    static const std::string statement = db::withList(selectNumbers);
    if (identifiers.empty()) return;
    std::vector<db::Parameter> values(identifiers.begin(), identifiers.end());
    std::vector<Target*> targets;
    for (const auto identifier : identifiers) {
        Target& target = targets_.find(identifier)->second;
        target.identity = {-1, std::string(identifier)};
        targets.push_back(&target);
    }
    // A row may answer an identifier in another spelling; that one makes no target of the row's.
    db::forEachRow(connection_, statement, values, [this](const db::Rows& rows) {
        const double pageId = rows.number("pageId", -1);
        const auto target = targets_.find(text::lower(rows.view("nodeId")));
        if (target != targets_.end()) target->second.identity.pageId = pageId;
    });
    learnStates(targets);
}

/// By the node that each of them has.
void LinkTargets::learnStates(const std::vector<Target*>& targets) {
    static const std::string statement = db::withList(selectStates);
    if (targets.empty()) return;
    std::multimap<std::string, Target*> wanted;
    std::vector<db::Parameter> values;
    for (Target* target : targets) {
        wanted.emplace(text::lower(target->identity.nodeId), target);
        values.emplace_back(std::string_view(target->identity.nodeId));
    }
    db::forEachRow(connection_, statement, values, [&](const db::Rows& rows) {
        const auto [first, last] = wanted.equal_range(text::lower(rows.view("nodeId")));
        for (auto entry = first; entry != last; ++entry) takeState(*entry->second, rows);
    });
}

/// A node too short to be one is never asked for.
void LinkTargets::takeState(Target& target, const db::Rows& rows) const {
    if (target.identity.nodeId.size() < PageIdentity::rootLength) return;
    if (isFolder(rows.view("type"))) {
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
        target.state = doesFolderShow(target.identity.nodeId) ? State::Online : State::Offline;
    }
    return target.state == State::Online;
}

/// The menus of most pages lead to the same folders.
bool LinkTargets::doesFolderShow(const std::string& nodeId) const {
    const std::string key = "folder\n" + nodeId + "\n" + today_;
    return !db::rememberedWhileUnchanged(connection_, key, [&]() -> std::string {
                return isFolderOnline(connection_, nodeId, today_) ? "shows" : "";
            }).empty();
}

const PageIdentity& LinkTargets::identityOf(const std::string& identifier) {
    return targetOf(identifier).identity;
}

}  // namespace torvex
