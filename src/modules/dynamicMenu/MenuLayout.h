#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "modules/dynamicMenu/MenuItems.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

/// A text of a template with places for what an item is, found once for all items.
class ItemText {
  public:
    /// `level` is that of the items, counted from 1; it says how far they are indented.
    ItemText(std::string text, int level);

    void appendTo(std::string& out, const MenuItem& item) const;

  private:
    enum class Field { Node, Number, Title, UpperTitle, LowerTitle, Indent };
    /// A field and the text ahead of it.
    struct Piece {
        std::size_t begin;
        std::size_t length;
        Field field;
    };

    void findPieces();
    void append(std::string& out, Field field, const MenuItem& item) const;

    std::string text_;
    std::string indent_;
    std::vector<Piece> pieces_;
    std::size_t rest_ = 0;  ///< where the text behind the last piece begins
};

/// How the items of one level look.
class LevelLayout {
  public:
    LevelLayout(HTMLTemplate source, int level);

    /// What stands between two items.
    const std::string& spacer() const { return spacer_; }

    // The forms of an item. One that the template lacks ends the request, as any missing block does.
    const ItemText& active() { return form(active_, "dynMenu_itemOn"); }
    const ItemText& inactive() { return form(inactive_, "dynMenu_itemOff"); }
    /// The layout as it stands, with the blocks of both forms.
    const ItemText& whole();

  private:
    const ItemText& form(std::optional<ItemText>& known, std::string_view block);

    HTMLTemplate source_;
    int level_;
    std::string spacer_;
    std::optional<ItemText> active_;
    std::optional<ItemText> inactive_;
    std::optional<ItemText> whole_;
};

/// The layouts of all levels of a menu. A level without one of its own looks like the one above it, the first
/// like the menu's default.
class MenuLayouts {
  public:
    MenuLayouts(HostContext& host, const HTMLTemplate& menu) : host_(host), menu_(menu) {}

    bool isEmpty() const { return textOf(1).empty(); }
    LevelLayout& ofLevel(int level);

  private:
    std::string textOf(int level) const;

    HostContext& host_;
    const HTMLTemplate& menu_;
    std::map<int, LevelLayout> levels_;
};

}  // namespace torvex
