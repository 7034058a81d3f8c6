#include "host/cache/SharedPages.h"

#include <algorithm>

#include "delivery/ViewCount.h"
#include "host/http/Exchange.h"
#include "pages/PageRoute.h"
#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"
#include "platform/HitCounter.h"
#include "platform/Keys.h"
#include "platform/db/Database.h"

namespace torvex {

bool SharedPages::mayShare(const Exchange& exchange) const {
    return cache_.isOn() && exchange.page && exchange.page->isShared && !exchange.head().hasBody &&
           methods::page.has(exchange.head().method);
}

Looks SharedPages::looksOf(boost::asio::io_context& loop) const {
    return {loop, services_.clock, [this] { return watch(); }};
}

std::unique_ptr<db::ContentWatch> SharedPages::watch() const {
    const ApplicationValues& values = services_.application;
    return services_.database.watch(values.text(applicationKey::databaseText),
                                    values.text(applicationKey::databaseUser),
                                    values.text(applicationKey::databasePassword), asks_);
}

bool SharedPages::serves(const Exchange& exchange, const PageCache::Page& page, const Look& look) {
    if (!page->stands(services_.application, look)) {
        cache_.drop(exchange, page);
        return false;
    }
    if (!canCount(page->views(), look.today)) return false;
    count(exchange, page->views(), look.today);
    return true;
}

PageCache::Page SharedPages::keep(const Exchange& exchange, Ingredients made, std::uint64_t changes,
                                  MadePage page) {
    auto kept = std::make_shared<KeptPage>(std::move(made), changes, std::move(page));
    cache_.keep(exchange, kept);
    return kept;
}

bool SharedPages::canCount(const std::vector<std::string>& views, const std::string& today) const {
    return std::ranges::all_of(
        views, [&](const std::string& nodeId) { return services_.hits.isReadyFor(nodeId, today); });
}

void SharedPages::count(const Exchange& exchange, const std::vector<std::string>& views) {
    count(exchange, views, services_.clock.today());
}

void SharedPages::count(const Exchange& exchange, const std::vector<std::string>& views,
                        const std::string& today) {
    if (views.empty() || !areViewsCounted(services_.application, exchange.remoteAddress)) return;
    for (const std::string& nodeId : views)
        services_.hits.count(nodeId, today, strangers_.isFirst(exchange, nodeId, today));
}

}  // namespace torvex
