#include "modules/newsflash/NewsflashBox.h"

#include <fmt/format.h>
#include <optional>

#include "modules/newsflash/NewsflashItems.h"
#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/db/Connection.h"
#include "platform/db/ScopeMemory.h"
#include "platform/text/Text.h"
#include "templates/DesignPath.h"
#include "templates/HTMLTemplate.h"
#include "templates/OptionalBlock.h"

namespace torvex {

namespace {

constexpr std::string_view selectDesign =
    "select * from TORVEX_NEWSFLASH_DESIGN where site = ? and lang = ? and id = ? and deleted = 0";
constexpr std::string_view selectLive =
    "select * from TORVEX_NEWSFLASH_LIVE where site = ? and lang = ? and id = ?";
constexpr std::string_view selectTemplate =
    "select tpl_filename from TORVEX_TEMPLATES where tpl_id = ? and tpl_system = 1";

/// Which of two blocks a template keeps depends on who looks at it.
constexpr std::string_view authorsBlock = "torvex_admin";
constexpr std::string_view visitorsBlock = "torvex_public";
constexpr std::string_view headBlock = "torvex_head";
constexpr std::string_view contentBlock = "torvex_content";

struct Definition {
    int templateId = 0;
    NewsflashItems items;
};

int wholeOf(const db::Rows& rows, std::string_view column) {
    return static_cast<int>(rows.number(column));
}

std::optional<Definition> readDefinition(const ModuleCall& call, std::string_view site, std::string_view lang,
                                         int number) {
    auto rows =
        call.connection.query(call.twin == Twin::Design ? selectDesign : selectLive, {site, lang, number});
    if (!rows.next()) return std::nullopt;
    return Definition{
        .templateId = wholeOf(rows, "templateId"),
        .items = {.newsflashId = wholeOf(rows, "nf_Id"),
                  .site = std::string(site),
                  .lang = std::string(lang),
                  .order = wholeOf(rows, "itemOrder"),
                  .textLength = wholeOf(rows, "itemLength"),
                  .most = wholeOf(rows, "numberOfItems"),
                  .selection = std::string(text::trim(rows.text("mode"))),
                  .imageAlignment = wholeOf(rows, "imageAlignment"),
                  .imageLimit = {wholeOf(rows, "imageWidth"), wholeOf(rows, "imageHeight")}},
    };
}

std::optional<std::string> templateFile(db::Connection& connection, int templateId) {
    auto rows = connection.query(selectTemplate, {templateId});
    if (!rows.next()) return std::nullopt;
    return std::string(text::trim(rows.text("tpl_filename")));
}

/// All that a box's content depends on besides the database. The parts are texts without line breaks, but for
/// the last one.
std::string keyOf(const ModuleCall& call, const NewsflashItems& items, std::string_view content) {
    const ApplicationValues& application = call.host.application;
    return fmt::format("newsflash\n{}\n{}\n{}\n{}\n{}\n{} {} {} {} {} {} {} {} {}\n{}", items.site,
                       items.lang, items.selection, call.host.clock.today(),
                       application.text(applicationKey::imagesUrl), items.newsflashId, items.order,
                       items.textLength, items.most, items.imageAlignment, items.imageLimit.width,
                       items.imageLimit.height, call.twin == Twin::Design,
                       application.isTrue(applicationKey::msgBoardHtmlAllowed), content);
}

}  // namespace

bool drawNewsflash(const ModuleCall& call, std::string_view site, std::string_view lang, int number,
                   NewsflashBox& box) {
    const auto definition = readDefinition(call, site, lang, number);
    if (!definition) return false;
    const auto file = templateFile(call.connection, definition->templateId);
    if (!file || file->empty()) return false;
    HTMLTemplate source(call.host);
    if (!source.load(
            designPath(call.host.application, applicationKey::contentTemplatesPath, site, lang, *file)))
        return false;
    source.replaceAllBlocks(call.forAuthors ? visitorsBlock : authorsBlock, "");
    box.source = source.strVal();
    box.header = optionalBlock(source, headBlock);
    box.content = optionalBlock(source, contentBlock);
    box.content = db::rememberedWhileUnchanged(
        call.connection, keyOf(call, definition->items, box.content),
        [&] { return drawNewsflashItems(call, definition->items, box.content); });
    return true;
}

}  // namespace torvex
