// registers: how many pages a design file gives its look to.

#include <array>
#include <map>

#include "desk/registers.h"
#include "platform/Errors.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

struct Chosen {
    std::string_view kind;
    std::string_view select;
};

/// Of the tree of an entry, in the order of its nodes: what each page names, 0 for what its parent has.
constexpr std::array<Chosen, 3> chosen{{
    {"template",
     "select p.nodeId, p.type, p.template as choice from TORVEX_TEMPLATES e "
     "inner join TORVEX_PAGES_LIVE p on p.site = e.tpl_site and p.lang = e.tpl_lang "
     "where e.tpl_id = ? order by p.nodeId"},
    {"baseTemplate",
     "select p.nodeId, p.type, p.baseTemplate as choice from TORVEX_BASETEMPLATES e "
     "inner join TORVEX_PAGES_LIVE p on p.site = e.btpl_site and p.lang = e.btpl_lang "
     "where e.btpl_id = ? order by p.nodeId"},
    {"stylesheet",
     "select p.nodeId, p.type, p.stylesheet as choice from TORVEX_STYLESHEETS e "
     "inner join TORVEX_PAGES_LIVE p on p.site = e.ss_site and p.lang = e.ss_lang "
     "where e.ss_id = ? order by p.nodeId"},
}};

/// What is in force at each node so far, in small letters; a parent comes before its children.
class InForce {
  public:
    int at(const std::string& nodeId, int choice) {
        if (choice == 0) {
            const auto parent = entries_.find(parentOf(nodeId));
            if (parent != entries_.end()) choice = parent->second;
        }
        return entries_.insert_or_assign(nodeId, choice).first->second;
    }

  private:
    std::map<std::string, int, std::less<>> entries_;
};

bool isShown(std::string_view type) {
    return text::equals(type, "P") || text::equals(type, "A");
}

}  // namespace

int registers::countLivePages(const std::string& kind, int id) try {
    for (const auto& [word, select] : chosen) {
        if (!text::equals(text::trim(kind), word)) continue;
        InForce inForce;
        int count = 0;
        auto rows = connection().query(select, {id});
        while (rows.next()) {
            const bool isOfEntry =
                inForce.at(text::lower(rows.text("nodeId")), static_cast<int>(rows.number("choice"))) == id;
            if (isOfEntry && isShown(text::trim(rows.text("type")))) ++count;
        }
        return count;
    }
    return 0;
} catch (...) {
    raiseFrom("countLivePages !");
}

}  // namespace torvex
