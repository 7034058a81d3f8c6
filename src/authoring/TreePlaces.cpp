// cManager: how many pages there are, and where a new one finds a place.

#include "authoring/FreePlaces.h"
#include "authoring/cManager.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view countAllLive = "select count(*) as total from TORVEX_PAGES_LIVE";
constexpr std::string_view countAllDesign = "select count(*) as total from TORVEX_PAGES_DESIGN";
constexpr std::string_view countPagesLive =
    "select count(*) as total from TORVEX_PAGES_LIVE where type = 'A' or type = 'P'";
constexpr std::string_view countPagesDesign =
    "select count(*) as total from TORVEX_PAGES_DESIGN where type = 'A' or type = 'P'";

constexpr std::string_view countChildren =
    "select count(*) as total from TORVEX_PAGES_DESIGN where parent = ?";
constexpr std::string_view countLevels =
    "select count(*) as total from TORVEX_PAGES_DESIGN "
    "where parent >= ? and parent < ? and length(parent) <= ?";

int total(db::Rows rows) {
    return rows.next() ? static_cast<int>(rows.number("total")) : 0;
}

}  // namespace

int cManager::getPageCount(const std::string& mode, bool folders) try {
    const bool design = twinOf(mode) == Twin::Design;
    if (folders) return total(connection().query(design ? countAllDesign : countAllLive));
    return total(connection().query(design ? countPagesDesign : countPagesLive));
} catch (...) {
    raiseFrom("getPageCount !");
}

int cManager::countPages(const std::string& parentIdent, int levels) try {
    const PageIdentity parent = identify(connection(), parentIdent);
    if (!parent.isValid() || levels <= 0) return 0;
    if (levels == 1) return total(connection().query(countChildren, {parent.nodeId}));
    const double deepest = static_cast<double>(text::length(parent.nodeId)) +
                           (levels - 1.0) * static_cast<double>(PageIdentity::levelLength);
    return total(connection().query(countLevels, {parent.nodeId, endOfPrefix(parent.nodeId), deepest}));
} catch (...) {
    raiseFrom("countPages !");
}

std::string cManager::getNewChild(const std::string& parentIdent) try {
    const PageIdentity parent = identify(connection(), parentIdent);
    return parent.isValid() ? newChildOf(connection(), parent.nodeId) : std::string();
} catch (...) {
    raiseFrom("getNewChild !");
}

int cManager::getNewOrderId(const std::string& pageIdent) try {
    return newOrderOf(connection(), nodeIdFrom(connection(), pageIdent));
} catch (...) {
    raiseFrom("getNewOrderId !");
}

}  // namespace torvex
