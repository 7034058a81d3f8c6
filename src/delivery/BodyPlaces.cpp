#include "delivery/BodyPlaces.h"

#include <algorithm>
#include <charconv>

#include "platform/text/Text.h"
#include "templates/Markers.h"

namespace torvex {

namespace {

constexpr std::string_view prefix = "<!--!torvex_body_";

/// The number in plain form at `at`, moving `at` behind it; 0 for none.
int takeNumber(std::string_view text, std::size_t& at) {
    int number = 0;
    if (at >= text.size() || text[at] < '1' || text[at] > '9') return 0;
    const auto read = std::from_chars(text.data() + at, text.data() + text.size(), number);
    if (read.ec != std::errc()) return 0;
    at = static_cast<std::size_t>(read.ptr - text.data());
    return number;
}

}  // namespace

BodyPlaces::BodyPlaces(std::string page) {
    size_ = page.size();
    put(pieces_.end(), split(texts_.emplace_back(std::move(page)), 0));
}

BodyPlaces::Piece BodyPlaces::pieceAt(std::string_view text, std::size_t at, std::size_t prefixLength) {
    std::size_t end = at + prefixLength;
    const int number = takeNumber(text, end);
    if (number == 0) return {};
    const auto marker = [&](std::string_view ending, Kind kind) -> Piece {
        const std::size_t length = text::matchLength(text, end, ending);
        if (length == 0) return {};
        return {text.substr(at, end + length - at), kind, number};
    };
    for (const auto& piece : {marker(markers::closing, Kind::Tag), marker("_start!-->", Kind::BlockStart),
                              marker("_end!-->", Kind::BlockEnd)}) {
        if (piece.number != 0) return piece;
    }
    return {};
}

/// The markers of numbers up to `above` are nothing but text.
BodyPlaces::Pieces BodyPlaces::split(std::string_view text, int above) {
    Pieces pieces;
    std::size_t kept = 0;
    for (std::size_t at = markers::find(text, prefix); at != text::npos;
         at = markers::find(text, prefix, at + 1)) {
        const Piece piece = pieceAt(text, at, text::matchLength(text, at, prefix));
        if (piece.number <= above) continue;
        if (at > kept) pieces.push_back({text.substr(kept, at - kept)});
        pieces.push_back(piece);
        kept = at + piece.text.size();
    }
    if (kept < text.size()) pieces.push_back({text.substr(kept)});
    return pieces;
}

void BodyPlaces::put(Pieces::iterator before, const Pieces& pieces) {
    for (const Piece& piece : pieces) {
        const auto place = pieces_.insert(before, piece);
        if (piece.kind == Kind::Tag) markers_[piece.number].tags.push_back(place);
        if (piece.kind == Kind::BlockStart) markers_[piece.number].starts.push_back(place);
    }
}

void BodyPlaces::remove(Pieces::iterator begin, Pieces::iterator end) {
    for (auto piece = begin; piece != end; ++piece) {
        size_ -= piece->text.size();
        piece->kind = Kind::Text;
    }
    removed_.splice(removed_.end(), pieces_, begin, end);
}

std::vector<BodyPlaces::Pieces::iterator> BodyPlaces::tagsOf(int number) const {
    std::vector<Pieces::iterator> tags;
    if (const auto known = markers_.find(number); known != markers_.end()) {
        for (const auto& tag : known->second.tags) {
            if (tag->kind == Kind::Tag) tags.push_back(tag);
        }
    }
    return tags;
}

/// Of several, the first in the page; `end` for none.
BodyPlaces::Pieces::iterator BodyPlaces::firstStart(int number, const Markers& markers) {
    const auto isThere = [](auto start) { return start->kind == Kind::BlockStart; };
    const auto count = std::count_if(markers.starts.begin(), markers.starts.end(), isThere);
    if (count == 0) return pieces_.end();
    if (count == 1) return *std::find_if(markers.starts.begin(), markers.starts.end(), isThere);
    return std::find_if(pieces_.begin(), pieces_.end(), [number](const Piece& piece) {
        return piece.kind == Kind::BlockStart && piece.number == number;
    });
}

BodyPlaces::Block BodyPlaces::findBlock(int number) {
    const auto known = markers_.find(number);
    if (known == markers_.end()) return {};
    const auto start = firstStart(number, known->second);
    const auto end = std::find_if(start, pieces_.end(), [number](const Piece& piece) {
        return piece.kind == Kind::BlockEnd && piece.number == number;
    });
    return {start, end, end != pieces_.end()};
}

void BodyPlaces::fill(int number, std::string text) {
    const std::vector<Pieces::iterator> tags = tagsOf(number);
    const Block block = tags.empty() ? findBlock(number) : Block();
    const std::size_t count = block.isThere ? 1 : tags.size();
    markers::checkSize(size_, text.size(), count);
    const std::string& kept = texts_.emplace_back(std::move(text));
    const Pieces pieces = split(kept, number);
    size_ += kept.size() * count;
    for (const auto& tag : tags) {
        put(tag, pieces);
        remove(tag, std::next(tag));
    }
    if (!block.isThere) return;
    put(block.start, pieces);
    remove(block.start, std::next(block.end));
}

std::string BodyPlaces::text() const {
    std::string page;
    page.reserve(size_);
    for (const Piece& piece : pieces_) page.append(piece.text);
    return page;
}

}  // namespace torvex
