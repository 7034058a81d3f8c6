#pragma once

#include <list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace torvex {

/// A page with its places for bodies: the tags "torvex_body_1" and so on, or blocks of that name. What is put
/// into a place may hold places of higher numbers. The work grows with the length of the finished page,
/// whatever the count of places. A marker that only comes to be where two texts meet is none.
class BodyPlaces {
  public:
    explicit BodyPlaces(std::string page);
    BodyPlaces(const BodyPlaces&) = delete;
    BodyPlaces& operator=(const BodyPlaces&) = delete;

    /// Whether there is a place of that number; to be asked for 1, 2, 3, ...
    bool has(int number) { return !tagsOf(number).empty() || findBlock(number).isThere; }

    /// Puts the text into every tag of that number or, when there is none, into the first block. Throws
    /// `Error`, having changed nothing, when the page would be larger than a page may be.
    void fill(int number, std::string text);

    /// The page as it stands.
    std::string text() const;

  private:
    enum class Kind { Text, Tag, BlockStart, BlockEnd };
    struct Piece {
        std::string_view text;
        Kind kind = Kind::Text;
        int number = 0;
    };
    using Pieces = std::list<Piece>;
    struct Markers {
        std::vector<Pieces::iterator> tags;
        std::vector<Pieces::iterator> starts;
    };
    struct Block {
        Pieces::iterator start;
        Pieces::iterator end;
        bool isThere = false;
    };

    static Pieces split(std::string_view text, int above);
    static Piece pieceAt(std::string_view text, std::size_t at, std::size_t prefix);
    void put(Pieces::iterator before, const Pieces& pieces);
    void remove(Pieces::iterator begin, Pieces::iterator end);
    std::vector<Pieces::iterator> tagsOf(int number) const;
    Block findBlock(int number);
    Pieces::iterator firstStart(int number, const Markers& markers);

    std::list<std::string> texts_;  ///< what the pieces are parts of
    Pieces pieces_;
    Pieces removed_;  ///< kept, so that nothing points nowhere
    std::map<int, Markers> markers_;
    std::size_t size_ = 0;
};

}  // namespace torvex
