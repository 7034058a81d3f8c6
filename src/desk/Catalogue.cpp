// desk, registers: the search catalogue of this server, and asking for its renewal.

#include "authoring/StatusCodes.h"
#include "desk/desk.h"
#include "desk/registers.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/text/Text.h"
#include "search/catalogue/Extent.h"
#include "search/catalogue/Queue.h"
#include "search/catalogue/Renewal.h"

namespace torvex {

namespace {

using catalogue::Task;

constexpr std::size_t catalogueColumns = 10;

namespace renewal {
constexpr std::string_view notKept = "-1";
constexpr std::string_view noSuchTask = "-2";
}  // namespace renewal

std::string_view told(Task task) {
    switch (task) {
        case Task::Compare:
            return "The search catalogue is to be compared with all files";
        case Task::Anew:
            return "The search catalogue is to be made anew";
        default:
            return "The work on the search catalogue is to stop";
    }
}

}  // namespace

Value desk::getCatalogue() try {
    const catalogue::Renewal renewal(host_.application);
    const auto extent = catalogue::extentOf(host_.application.text(applicationKey::installPath));
    const auto progress = renewal.progress();
    const catalogue::Progress now = progress.value_or(catalogue::Progress{});
    const std::size_t queued = extent ? catalogue::countQueuedBehind(connection(), extent->queue) : 0;
    ResultGrid grid(catalogueColumns);
    grid.add({static_cast<double>(extent ? extent->entries : 0),
              static_cast<double>(extent ? extent->bytes : 0), static_cast<double>(queued), progress ? 1 : 0,
              catalogue::taskName(renewal.asked()), catalogue::taskName(now.task),
              static_cast<double>(now.total), static_cast<double>(now.done),
              now.compared ? Value(*now.compared) : Value(), now.failure});
    return gridOrEmpty(std::move(grid));
} catch (...) {
    raiseFrom("getCatalogue !");
}

std::string registers::renewCatalogue(const std::string& task, int advId) {
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    const auto asked = catalogue::taskOf(text::trim(task));
    if (!asked) return std::string(renewal::noSuchTask);
    if (!catalogue::Renewal(host_.application).ask(*asked)) return std::string(renewal::notKept);
    recordChange("renewCatalogue", advId, "renew", std::string(told(*asked)));
    return std::string(status::done);
}

}  // namespace torvex
