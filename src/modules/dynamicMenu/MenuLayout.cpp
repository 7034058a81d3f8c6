#include "modules/dynamicMenu/MenuLayout.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <utility>

#include "platform/text/Text.h"
#include "templates/Markers.h"
#include "templates/OptionalBlock.h"

namespace torvex {

namespace {

constexpr int indentOfLevel = 7;  // pixels

std::string indentOf(int level) {
    return fmt::format(
        R"(<img src="/torvex/torvex_dynMenu/images/spacer.gif" height="1" border="0" width="{}" alt="">)",
        std::max(0, level - 1) * indentOfLevel);
}

}  // namespace

ItemText::ItemText(std::string text, int level) : text_(std::move(text)), indent_(indentOf(level)) {
    findPieces();
}

void ItemText::findPieces() {
    static constexpr std::array<std::pair<std::string_view, Field>, 7> names{{
        {"dynMenu_Id!-->", Field::Node},
        {"dynMenu_pageId!-->", Field::Number},
        {"dynMenu_pageTitle!-->", Field::Title},
        {"UCase(dynMenu_pageTitle)!-->", Field::UpperTitle},
        {"LCase(dynMenu_pageTitle)!-->", Field::LowerTitle},
        {"space!-->", Field::Indent},
        {"spacer!-->", Field::Indent},
    }};
    for (std::size_t at = markers::find(text_, markers::opening); at != text::npos;
         at = markers::find(text_, markers::opening, at)) {
        const std::size_t name = at + markers::opening.size();
        std::size_t length = 0;
        for (const auto& [known, field] : names) {
            length = text::matchLength(text_, name, known);
            if (length == 0) continue;
            pieces_.push_back({rest_, at - rest_, field});
            rest_ = name + length;
            break;
        }
        at = name + length;
    }
}

void ItemText::appendTo(std::string& out, const MenuItem& item) const {
    for (const auto& piece : pieces_) {
        out.append(text_, piece.begin, piece.length);
        append(out, piece.field, item);
    }
    out.append(text_, rest_);
}

void ItemText::append(std::string& out, Field field, const MenuItem& item) const {
    switch (field) {
        case Field::Node:
            std::ranges::copy_if(item.nodeId, std::back_inserter(out), [](char c) { return c != '.'; });
            break;
        case Field::Number:
            out.append(text::fromNumber(item.pageId));
            break;
        case Field::Title:
            out.append(text::htmlEncode(item.title));
            break;
        case Field::UpperTitle:
            out.append(text::upper(text::htmlEncode(item.title)));
            break;
        case Field::LowerTitle:
            out.append(text::lower(text::htmlEncode(item.title)));
            break;
        case Field::Indent:
            out.append(indent_);
            break;
    }
}

LevelLayout::LevelLayout(HTMLTemplate source, int level)
    : source_(std::move(source)), level_(level), spacer_(optionalBlock(source_, "dynMenu_spacer")) {}

const ItemText& LevelLayout::whole() {
    if (!whole_) whole_.emplace(source_.strVal(), level_);
    return *whole_;
}

const ItemText& LevelLayout::form(std::optional<ItemText>& known, std::string_view block) {
    if (!known) known.emplace(source_.extractBlock(block), level_);
    return *known;
}

LevelLayout& MenuLayouts::ofLevel(int level) {
    const auto found = levels_.find(level);
    if (found != levels_.end()) return found->second;
    HTMLTemplate source(host_);
    source.setStrVal(textOf(level));
    return levels_.try_emplace(level, std::move(source), level).first->second;
}

std::string MenuLayouts::textOf(int level) const {
    for (; level > 0; --level) {
        const std::string block = "dynMenu_level" + std::to_string(level);
        if (menu_.blockExists(block)) return menu_.extractBlock(block);
    }
    return optionalBlock(menu_, "dynMenu_level");
}

}  // namespace torvex
