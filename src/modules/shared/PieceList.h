#pragma once

#include <string>
#include <string_view>

#include "templates/Markers.h"

namespace torvex {

/// Pieces of HTML in a row: a line for each, with a line for the spacer between two.
class PieceList {
  public:
    explicit PieceList(std::string spacer) : spacer_(std::move(spacer)) {}

    /// Throws `Error` once they are more than a page may hold.
    void add(std::string_view piece) {
        markers::checkSize(text_.size() + spacer_.size() + 2, piece.size());
        if (!text_.empty()) text_.append("\r").append(spacer_);
        text_.append("\r").append(piece);
    }
    const std::string& text() const { return text_; }

  private:
    std::string spacer_;
    std::string text_;
};

}  // namespace torvex
