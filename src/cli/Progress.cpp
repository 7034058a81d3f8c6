#include "cli/Progress.h"

#include <algorithm>
#include <fmt/format.h>
#include <ostream>

namespace torvex::cli {

namespace {

constexpr std::size_t whole = 100;
constexpr std::size_t barWidth = 40;
/// Percent between two lines.
constexpr std::size_t lineStep = 10;
/// Fewer than this are done before a line would help anybody.
constexpr std::size_t fewestForLines = 100;

/// Back to the line's beginning and nothing left of it.
constexpr const char* eraseLine = "\r\x1b[K";

}  // namespace

Progress::Progress(const Terminal& terminal, std::size_t total, std::string what)
    : err_(terminal.err), isBar_(terminal.errIsWatched), total_(total), what_(std::move(what)) {}

Progress::~Progress() {
    if (isDrawn_) err_ << '\n' << std::flush;
}

/// More may be done than were counted: pages are published meanwhile.
std::size_t Progress::percent() const {
    return total_ == 0 ? whole : std::min(done_ * whole / total_, whole);
}

void Progress::step() {
    ++done_;
    if (isBar_ && (percent() != shownPercent_ || !isDrawn_)) draw();
    if (!isBar_ && total_ >= fewestForLines && percent() / lineStep != shownPercent_ / lineStep) writeLine();
}

void Progress::clear() {
    if (isDrawn_) err_ << eraseLine << std::flush;
    isDrawn_ = false;
}

void Progress::draw() {
    shownPercent_ = percent();
    const std::size_t filled = barWidth * shownPercent_ / whole;
    err_ << fmt::format("{}[{:#<{}}{:.<{}}] {:3} %  {} of {} {}", eraseLine, "", filled, "",
                        barWidth - filled, shownPercent_, done_, total_, what_)
         << std::flush;
    isDrawn_ = true;
}

void Progress::writeLine() {
    shownPercent_ = percent();
    err_ << fmt::format("{} of {} {}\n", done_, total_, what_) << std::flush;
}

}  // namespace torvex::cli
