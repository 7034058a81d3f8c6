#include "authoring/PageIdentList.h"

#include <algorithm>

#include "platform/text/Text.h"

namespace torvex {

PageIdentList::PageIdentList(std::string_view pageList) {
    std::string entry;
    const auto close = [&] {
        if (!entry.empty()) entries_.push_back(std::move(entry));
        entry.clear();
    };
    for (const char c : text::lower(pageList)) {
        if (c == ',' || c == '-') {
            close();
        } else if (c != ' ') {
            entry.push_back(c);
        }
    }
    close();
}

bool PageIdentList::pass(const std::function<bool(const std::string&)>& step) {
    return std::erase_if(entries_, step) > 0;
}

void PageIdentList::passes(const std::function<bool(const std::string&)>& step) {
    while (pass(step)) {
    }
}

std::string PageIdentList::text() const {
    std::string joined;
    for (const std::string& entry : entries_) joined.append(joined.empty() ? "" : ",").append(entry);
    return joined;
}

}  // namespace torvex
