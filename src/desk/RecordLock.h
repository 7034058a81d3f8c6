#pragma once

#include <string>
#include <string_view>

namespace torvex {
struct Actor;
namespace db {
class Connection;
}

/// Whether a change may touch a record that another session may have open. The record is taken for the
/// transaction; whose it was before, it is again afterwards.
class RecordLock {
  public:
    RecordLock(db::Connection& transaction, const Actor& actor, std::string_view item, int id);
    RecordLock(const RecordLock&) = delete;
    RecordLock& operator=(const RecordLock&) = delete;

    bool isHeld() const { return isHeld_; }
    /// To be called at the end of a change that doesn't let the record go by itself.
    void giveBack();

  private:
    db::Connection& transaction_;
    const Actor& actor_;
    std::string_view item_;
    std::string id_;
    bool wasOurs_ = false;
    bool isHeld_ = false;
};

}  // namespace torvex
