#include "desk/Presence.h"

#include <algorithm>

#include "platform/text/Text.h"

namespace torvex {

namespace {

using namespace std::chrono_literals;

/// Two notes that were lost are no reason to be gone.
constexpr auto stayOver = 75s;
/// Browsers let what a hidden window does wait.
constexpr auto awayOver = 6min;
constexpr auto askOver = 10min;
constexpr auto forgetAfter = 12h;

constexpr std::size_t mostStays = 8;
constexpr std::size_t mostAsks = 20;
constexpr std::size_t mostHeld = 50;
constexpr std::size_t mostOthers = 200;
constexpr std::size_t rememberedAnyway = 1000;

}  // namespace

bool Presence::isOver(const Stay& stay) const {
    const auto unheard = now_() - stay.told;
    return stay.visit.doing == Doing::Away ? unheard > awayOver : unheard > stayOver;
}

void Presence::note(const Visit& visit) {
    const std::scoped_lock guard(mutex_);
    if (authors_.size() >= rememberedAnyway) forgetLongGone();
    const auto [found, isNew] = authors_.try_emplace(visit.who.loginId);
    Author& author = found->second;
    author.told = now_();
    if (isNew || visit.doing != Doing::Away) author.active = author.told;
    Stay stay{visit, author.told};
    author.stays.remove_if([&](const Stay& one) {
        if (isOver(one)) return true;
        if (one.visit.place != visit.place) return false;
        stay.visit.since = one.visit.since;
        return true;
    });
    if (visit.place.isNowhere()) return;
    author.stays.push_front(std::move(stay));
    if (author.stays.size() > mostStays) author.stays.pop_back();
}

void Presence::leave(int loginId) {
    const std::scoped_lock guard(mutex_);
    const auto found = authors_.find(loginId);
    if (found == authors_.end()) return;
    found->second.stays.clear();
    found->second.asks.clear();
    found->second.held.clear();
}

std::vector<Presence::Visit> Presence::others(int loginId, const std::string& site,
                                              const std::string& lang) const {
    std::vector<Visit> visits;
    {
        const std::scoped_lock guard(mutex_);
        for (const auto& [id, author] : authors_) {
            if (id == loginId) continue;
            for (const Stay& stay : author.stays) {
                const Place& place = stay.visit.place;
                if (place.site == site && place.lang == lang && !isOver(stay)) visits.push_back(stay.visit);
            }
        }
    }
    std::ranges::stable_sort(visits, {}, [](const Visit& visit) { return text::lower(visit.who.name); });
    if (visits.size() > mostOthers) visits.resize(mostOthers);
    return visits;
}

std::optional<Presence::Visit> Presence::latest(int loginId, const std::string& site,
                                                const std::string& lang) const {
    const std::scoped_lock guard(mutex_);
    const auto found = authors_.find(loginId);
    if (found == authors_.end()) return std::nullopt;
    for (const Stay& stay : found->second.stays) {
        const Place& place = stay.visit.place;
        if (!isOver(stay) && (site.empty() || (place.site == site && place.lang == lang))) return stay.visit;
    }
    return std::nullopt;
}

bool Presence::isHere(int loginId) const {
    return latest(loginId, {}, {}).has_value();
}

std::optional<std::chrono::seconds> Presence::idle(int loginId) const {
    const std::scoped_lock guard(mutex_);
    const auto found = authors_.find(loginId);
    if (found == authors_.end()) return std::nullopt;
    return std::chrono::duration_cast<std::chrono::seconds>(now_() - found->second.active);
}

void Presence::ask(int holderId, const Ask& ask) {
    const std::scoped_lock guard(mutex_);
    const auto found = authors_.find(holderId);
    if (found == authors_.end()) return;
    auto& asks = found->second.asks;
    const bool isKnown = std::ranges::any_of(asks, [&](const Pending& one) {
        return one.ask.asker.loginId == ask.asker.loginId && one.ask.pageId == ask.pageId &&
               now_() - one.made <= askOver;
    });
    if (isKnown) return;
    asks.push_back({ask, now_()});
    if (asks.size() > mostAsks) asks.pop_front();
}

std::vector<Presence::Ask> Presence::asksOf(int loginId) {
    const std::scoped_lock guard(mutex_);
    const auto found = authors_.find(loginId);
    if (found == authors_.end()) return {};
    auto& pending = found->second.asks;
    pending.remove_if([&](const Pending& one) { return now_() - one.made > askOver; });
    std::vector<Ask> asks;
    for (const Pending& one : pending) asks.push_back(one.ask);
    return asks;
}

void Presence::answer(int loginId, PageId pageId) {
    const std::scoped_lock guard(mutex_);
    const auto found = authors_.find(loginId);
    if (found == authors_.end()) return;
    found->second.asks.remove_if([&](const Pending& one) { return one.ask.pageId == pageId; });
}

void Presence::noteHeld(int loginId, PageId pageId) {
    const std::scoped_lock guard(mutex_);
    auto& held = authors_[loginId].held;
    if (held.size() >= mostHeld) held.clear();
    held.insert(pageId);
}

bool Presence::hasHeld(int loginId, PageId pageId) const {
    const std::scoped_lock guard(mutex_);
    const auto found = authors_.find(loginId);
    return found != authors_.end() && found->second.held.contains(pageId);
}

void Presence::forgetLongGone() {
    std::erase_if(authors_, [&](const auto& one) { return now_() - one.second.told > forgetAfter; });
}

}  // namespace torvex
