#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/DateTime.h"

namespace torvex {
class ApplicationValues;
}

namespace torvex::catalogue {

/// What can be asked of who keeps the catalogue.
enum class Task { None, Compare, Anew, Stop };

/// "compare", "anew", "stop"; "" for none.
std::string_view taskName(Task task);
std::optional<Task> taskOf(std::string_view name);

/// How far the keeper has come.
struct Progress {
    Task task = Task::None;              ///< that is at work
    std::size_t total = 0;               ///< files of it
    std::size_t done = 0;                ///< of these
    std::optional<DateTime> compared{};  ///< when all files were compared last
    std::string failure{};               ///< that is in the way

    bool operator==(const Progress&) const = default;
};

/// Between the requests of a server and the keeper of its catalogue: what is asked, and how far it has come. Stands
/// in the values that all requests share, so that nobody waits, and any request may look. Safe to share between
/// threads.
class Renewal {
  public:
    /// The values must outlive this.
    explicit Renewal(ApplicationValues& application) : application_(application) {}

    /// False where nobody keeps the catalogue. What was asked before and isn't begun gives way.
    bool ask(Task task);
    Task asked() const;
    /// Nothing where nobody keeps the catalogue.
    std::optional<Progress> progress() const;

    // For the keeper.

    void tell(const Progress& progress);
    /// What was asked is begun. Stays if something else was asked meanwhile.
    void take(Task task);
    /// Nobody keeps it any more.
    void end();

  private:
    ApplicationValues& application_;
};

}  // namespace torvex::catalogue
