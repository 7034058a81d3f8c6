#include "administration/MenuEntries.h"

#include "platform/Errors.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/Vocabulary.h"

namespace torvex {

namespace {

constexpr std::string_view selectUp =
    "select a1.advId, a1.advLevel, a1.advReference, a1.advTitle, a1.advIcon, a1.advProgram, a1.advView, "
    "a1.advEdit, case when (select count(*) from TORVEX_ADVANCED a2 where a2.advLevel = a1.advLevel and "
    "a2.advReference like a1.advReference || '%') <= 1 then 0 else 1 end as hasChildren "
    "from TORVEX_ADVANCED a1 order by a1.advLevel, a1.advReference";
constexpr std::string_view selectDown =
    "select a1.advId, a1.advLevel, a1.advReference, a1.advTitle, a1.advIcon, a1.advProgram, a1.advView, "
    "a1.advEdit, case when (select count(*) from TORVEX_ADVANCED a2 where a2.advLevel = a1.advLevel and "
    "a2.advReference like a1.advReference || '%') <= 1 then 0 else 1 end as hasChildren "
    "from TORVEX_ADVANCED a1 order by a1.advLevel desc, a1.advReference";

}  // namespace

MenuOrder menuOrder(int order) {
    return order == 1 ? MenuOrder::LevelsDown : MenuOrder::LevelsUp;
}

double titleLabel(std::string_view advTitle) {
    return text::toNumber(advTitle);
}

std::map<double, std::string> titlesOf(db::Connection& connection, std::string_view language,
                                       const std::vector<double>& labels) try {
    return vocabularyTexts(connection, language, labels);
} catch (...) {
    raiseFrom("getVocab !");
}

std::vector<MenuEntry> menuEntries(db::Connection& connection, std::string_view language, MenuOrder order) {
    std::vector<MenuEntry> entries;
    std::vector<double> labels;
    auto rows = connection.query(order == MenuOrder::LevelsDown ? selectDown : selectUp);
    while (rows.next()) {
        MenuEntry entry;
        entry.advId = static_cast<int>(rows.number("advId"));
        entry.level = static_cast<int>(rows.number("advLevel"));
        entry.reference = rows.text("advReference");
        entry.icon = rows.text("advIcon");
        entry.program = rows.text("advProgram");
        entry.offersView = rows.number("advView") == 1;
        entry.offersEdit = rows.number("advEdit") == 1;
        entry.hasChildren = rows.number("hasChildren") == 1;
        labels.push_back(titleLabel(rows.text("advTitle")));
        entries.push_back(std::move(entry));
    }
    const auto titles = titlesOf(connection, language, labels);
    for (std::size_t i = 0; i < entries.size(); ++i) entries[i].title = titles.at(labels[i]);
    return entries;
}

}  // namespace torvex
