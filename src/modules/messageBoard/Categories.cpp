// The categories of a message board: the way to one, and those below it.

#include <algorithm>

#include "modules/messageBoard/Board.h"
#include "modules/shared/PieceList.h"
#include "platform/db/Connection.h"
#include "platform/text/ScriptText.h"
#include "platform/text/Text.h"
#include "templates/HTMLTemplate.h"
#include "templates/OptionalBlock.h"

namespace torvex {

namespace {

constexpr std::string_view selectBelowDesign =
    "select msgB_catId, msgB_catTitle from TORVEX_MSGB_CATEGORIES_DESIGN where msgB_site = ? and "
    "msgB_lang = ? and msgB_parent = ? and msgB_deleted = 0 and msgB_online <> 0 order by msgB_catTitle";
constexpr std::string_view selectBelowLive =
    "select msgB_catId, msgB_catTitle from TORVEX_MSGB_CATEGORIES_LIVE where msgB_site = ? and "
    "msgB_lang = ? and msgB_parent = ? and msgB_online = 1 order by msgB_catTitle";
constexpr std::string_view selectStepDesign =
    "select msgB_catId, msgB_catTitle from TORVEX_MSGB_CATEGORIES_DESIGN where msgB_site = ? and "
    "msgB_lang = ? and msgB_catId = ?";
constexpr std::string_view selectStepLive =
    "select msgB_catId, msgB_catTitle from TORVEX_MSGB_CATEGORIES_LIVE where msgB_site = ? and "
    "msgB_lang = ? and msgB_catId = ?";

constexpr std::string_view categoryBlock = "msgB_category";
constexpr std::string_view spacerBlock = "msgB_spacer";
constexpr std::string_view idTag = "msgB_catId";
constexpr std::string_view titleTag = "msgB_catTitle";

constexpr std::string_view between = " > ";

std::string linkTo(std::string_view path, std::string_view title) {
    std::string link = "<a href=\"javascript:viewCat('";
    link.append(text::htmlEncode(scriptText(path))).append("')\" class=\"msgB_breadcrumb\">");
    return link.append(title).append("</a>").append(between);
}

}  // namespace

std::string categoryAbove(std::string_view path) {
    constexpr std::size_t level = 3;
    const std::size_t length = text::length(path);
    return std::string(text::first(path, length <= level ? 0 : length - level));
}

std::string categoryTrail(const BoardView& view) {
    if (view.category.empty() || !text::startsWith(view.category, view.root)) return {};
    std::string trail;
    int steps = 0;
    const std::size_t shortest = std::max<std::size_t>(text::length(view.root), 1);
    for (std::string path = view.category; text::length(path) >= shortest; path = categoryAbove(path)) {
        auto rows = view.call.connection.query(
            view.call.twin == Twin::Design ? selectStepDesign : selectStepLive, {view.site, view.lang, path});
        if (!rows.next()) continue;
        ++steps;
        const std::string title = text::htmlEncode(text::trim(rows.text("msgB_catTitle")));
        trail.insert(0, path == view.category ? title + std::string(between)
                                              : linkTo(text::trim(rows.text("msgB_catId")), title));
    }
    if (view.root.empty()) {
        ++steps;
        trail.insert(0, linkTo("", "top"));
    }
    if (steps < 2) return {};
    trail.resize(trail.size() - between.size());
    return trail;
}

std::string drawCategories(const BoardView& view, const std::string& html) {
    HTMLTemplate list(view.call.host);
    list.setStrVal(html);
    auto rows =
        view.call.connection.query(view.call.twin == Twin::Design ? selectBelowDesign : selectBelowLive,
                                   {view.site, view.lang, view.category});
    if (!rows.next() || !list.blockExists(categoryBlock)) return {};
    const std::string spacer = optionalBlock(list, spacerBlock);
    list.replaceAllBlocks(spacerBlock, "");
    const std::string layout = list.extractBlock(categoryBlock);
    PieceList pieces(spacer);
    do {
        HTMLTemplate piece(view.call.host);
        piece.setStrVal(layout);
        piece.replaceTag(idTag, text::htmlEncode(text::trim(rows.text("msgB_catId"))));
        piece.replaceTag(titleTag, text::htmlEncode(text::trim(rows.text("msgB_catTitle"))));
        pieces.add(piece.strVal());
    } while (rows.next());
    list.replaceBlock(categoryBlock, pieces.text());
    return list.takeStrVal();
}

}  // namespace torvex
