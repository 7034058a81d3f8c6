#pragma once

#include <filesystem>
#include <functional>
#include <vector>

namespace torvex {

/// What has to be taken back when a piece of work fails half-way: runs the noted steps at its end, the last
/// one first, unless the work is kept. A step that fails doesn't stop the others.
class Undo {
  public:
    Undo() = default;
    Undo(const Undo&) = delete;
    Undo& operator=(const Undo&) = delete;
    ~Undo();

    void add(std::function<void()> step) { steps_.push_back(std::move(step)); }

    /// To be called before `path` is made: it will be removed with all that is in it, and so will those of
    /// its parents that aren't there yet. A path that is there already stays.
    void removeWhatIsMade(const std::filesystem::path& path);

    void keep() { steps_.clear(); }

  private:
    std::vector<std::function<void()>> steps_;
};

}  // namespace torvex
