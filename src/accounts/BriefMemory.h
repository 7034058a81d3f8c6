#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include "platform/DateTime.h"
#include "platform/HostContext.h"
#include "platform/Session.h"

namespace torvex {

/// What the memory of a session holds for some minutes, and nothing else: it needs no row, and nobody has to clear it away.
/// One for each key; apart from the values of a session, which settings and operations can name.
template <typename Kept>
class BriefMemory {
  public:
    constexpr BriefMemory(std::string_view key, std::chrono::minutes longest)
        : key_(key), longest_(longest) {}

    /// From now on, in place of another one.
    void keep(HostContext& host, Kept kept) const {
        host.session.setObject(key_, std::make_shared<Entry>(std::move(kept), host.clock.unixSeconds()));
    }
    /// What is kept becomes another, and gets no more time by that. Does nothing when it is gone.
    void change(HostContext& host, Kept kept) const {
        const auto entry = find(host);
        if (entry) host.session.setObject(key_, std::make_shared<Entry>(std::move(kept), entry->since));
    }
    /// Null when there is none, or its time is over. Good for as long as whoever asks holds it.
    std::shared_ptr<const Kept> get(const HostContext& host) const {
        const auto entry = find(host);
        return entry ? std::shared_ptr<const Kept>(entry, &entry->kept) : nullptr;
    }
    void forget(HostContext& host) const { host.session.setObject(key_, nullptr); }

  private:
    struct Entry final : SessionObject {
        Entry(Kept what, std::int64_t moment) : kept(std::move(what)), since(moment) {}
        Kept kept;
        std::int64_t since;  ///< seconds since 1970
    };

    std::shared_ptr<const Entry> find(const HostContext& host) const {
        auto entry = std::dynamic_pointer_cast<const Entry>(host.session.object(key_));
        const bool isOver =
            entry && host.clock.unixSeconds() - entry->since > std::chrono::seconds(longest_).count();
        return isOver ? nullptr : entry;
    }

    std::string_view key_;
    std::chrono::minutes longest_;
};

}  // namespace torvex
