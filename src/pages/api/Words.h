#pragma once

#include <chrono>
#include <initializer_list>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace torvex {
struct HostContext;
}

namespace torvex::api {

/// A place of a sentence, "{holder}", and what stands there.
using Place = std::pair<std::string_view, std::string_view>;

/// The sentences of problems in the languages of the interface, kept in memory: the host tells of a refusal
/// where it can't ask a database. A changed word shows within a minute. Safe to share between threads.
class Words {
  public:
    /// Reads them again when they are old.
    void refresh(HostContext& host);

    /// The sentence with its places filled; in English where the language hasn't got it.
    std::string sentence(std::string_view language, int label,
                         std::initializer_list<Place> places = {}) const;

    /// Of the languages that are switched on the one that a request's Accept-Language likes best; else "en".
    std::string languageFor(std::string_view acceptLanguage) const;

  private:
    using Clock = std::chrono::steady_clock;
    using Sentences = std::map<int, std::string>;
    using Languages = std::map<std::string, Sentences, std::less<>>;

    std::shared_ptr<const Languages> languages() const;

    mutable std::mutex mutex_;
    std::shared_ptr<const Languages> languages_ = std::make_shared<Languages>();
    Clock::time_point readAt_ = Clock::time_point::min();
};

/// The language of whoever asks: the login's, or for visitors what their browser prefers.
std::string languageOf(const HostContext& host, const Words& words);

}  // namespace torvex::api
