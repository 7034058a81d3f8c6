#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/SharedCell.h"
#include "platform/Value.h"

namespace torvex {

/// The values of one installation, shared by all requests. Keys ignore case; a key never written is empty.
/// Reading takes an immutable snapshot and waits for no writer's work; `lock` and `unlock` bracket writers, so that
/// a sequence of writes is seen whole.
class ApplicationValues {
  public:
    ApplicationValues();
    ApplicationValues(const ApplicationValues&) = delete;
    ApplicationValues& operator=(const ApplicationValues&) = delete;
    virtual ~ApplicationValues() = default;

    virtual Value get(std::string_view key) const;
    std::string text(std::string_view key) const { return get(key).toText(); }
    double number(std::string_view key) const { return get(key).toNumber(); }
    bool isTrue(std::string_view key) const { return get(key).isTrue(); }

    /// Written at once; inside `lock` and `unlock`, seen by others (and by `get`) when `unlock` is called.
    virtual void set(std::string_view key, Value value);

    /// Keeps other writers out until `unlock` is called on the same thread.
    virtual void lock();
    virtual void unlock();

    /// How often any of them has been written: whoever read them since it was as it is, has read them as they are.
    std::uint64_t changes() const { return changes_.load(std::memory_order_acquire); }

  private:
    struct KeyHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view key) const;
    };
    struct KeyEqual {
        using is_transparent = void;
        bool operator()(std::string_view a, std::string_view b) const;
    };
    using Map = std::unordered_map<std::string, Value, KeyHash, KeyEqual>;

    void publish();

    SharedCell<Map> map_;
    std::atomic<std::uint64_t> changes_ = 0;
    std::recursive_mutex writing_;
    std::shared_ptr<Map> pending_;  ///< the copy being written between `lock` and `unlock`
};

}  // namespace torvex
