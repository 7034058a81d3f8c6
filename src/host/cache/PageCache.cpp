#include "host/cache/PageCache.h"

#include <algorithm>
#include <fmt/format.h>

#include "host/http/Exchange.h"
#include "host/http/RequestAnswers.h"

namespace torvex {

namespace {

/// What a request gives to all questions. Each answer stands behind its length, so that no two lists look alike.
std::string keyOf(const Exchange& exchange, RequestAnswers& answers, const RequestQuestions& questions) {
    std::string key = fmt::format("{}", static_cast<const void*>(exchange.page));
    for (const RequestQuestion& question : questions) {
        const std::string answer = answers.to(question);
        fmt::format_to(std::back_inserter(key), "{},{}:{}{}:", static_cast<int>(question.kind), question.name,
                       question.reduction ? "~" : "", answer.size());
        key += answer;
    }
    return key;
}

}  // namespace

PageCache::Askings PageCache::askingsOf(const PageRoute* route) const {
    const std::scoped_lock guard(mutex_);
    const auto found = askings_.find(route);
    return found == askings_.end() ? Askings() : found->second;
}

PageCache::Page PageCache::find(const Exchange& exchange) {
    RequestAnswers answers(exchange);
    for (const auto& questions : askingsOf(exchange.page)) {
        const std::string key = keyOf(exchange, answers, *questions);
        const std::scoped_lock guard(mutex_);
        const auto found = byKey_.find(key);
        if (found == byKey_.end()) continue;
        order_.splice(order_.begin(), order_, found->second);
        return found->second->page;
    }
    return nullptr;
}

void PageCache::noteAsking(const PageRoute* route, const RequestQuestions& questions) {
    Askings& known = askings_[route];
    const bool isKnown = std::ranges::any_of(known, [&](const auto& one) { return *one == questions; });
    if (isKnown) return;
    if (known.size() == mostAskings) known.erase(known.begin());
    known.push_back(std::make_shared<const RequestQuestions>(questions));
}

void PageCache::keep(const Exchange& exchange, const Page& page) {
    RequestAnswers answers(exchange);
    std::string key = keyOf(exchange, answers, page->questions());
    const std::size_t bytes = page->bytes() + 2 * key.size() + sizeof(Kept);
    if (bytes > mostBytes_) return;
    const std::scoped_lock guard(mutex_);
    noteAsking(exchange.page, page->questions());
    removeKey(key);
    order_.push_front({key, page, bytes});
    byKey_.emplace(std::move(key), order_.begin());
    bytes_ += bytes;
    makeRoom();
}

void PageCache::removeKey(const std::string& key) {
    const auto found = byKey_.find(key);
    if (found == byKey_.end()) return;
    bytes_ -= found->second->bytes;
    order_.erase(found->second);
    byKey_.erase(found);
}

void PageCache::makeRoom() {
    while (bytes_ > mostBytes_) removeKey(std::string(order_.back().key));
}

void PageCache::drop(const Exchange& exchange, const Page& page) {
    RequestAnswers answers(exchange);
    const std::string key = keyOf(exchange, answers, page->questions());
    const std::scoped_lock guard(mutex_);
    const auto found = byKey_.find(key);
    if (found != byKey_.end() && found->second->page == page) removeKey(key);
}

std::size_t PageCache::bytes() const {
    const std::scoped_lock guard(mutex_);
    return bytes_;
}

std::size_t PageCache::size() const {
    const std::scoped_lock guard(mutex_);
    return order_.size();
}

}  // namespace torvex
