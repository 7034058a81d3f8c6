#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

#include "cli/Terminal.h"

namespace torvex::cli {

/// Shows how far a long piece of work has come: a bar that is drawn over itself where somebody watches, else
/// a line now and then, as it suits a log. Ends the bar's line at the end of its life.
class Progress {
  public:
    /// `what` names what is counted: "pages".
    Progress(const Terminal& terminal, std::size_t total, std::string what);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    /// One more is done.
    void step();
    /// Takes the bar away, so that a line can be written; the next step draws it again.
    void clear();

  private:
    std::size_t percent() const;
    void draw();
    void writeLine();

    std::ostream& err_;
    bool isBar_;
    std::size_t total_;
    std::string what_;
    std::size_t done_ = 0;
    std::size_t shownPercent_ = 0;
    bool isDrawn_ = false;
};

}  // namespace torvex::cli
