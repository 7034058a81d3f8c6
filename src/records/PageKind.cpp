#include "records/PageKind.h"

#include "platform/text/Text.h"

namespace torvex {

namespace {

constexpr std::string_view letters = "PAFS";
constexpr PageKind kinds[] = {PageKind::Page, PageKind::Application, PageKind::Folder,
                              PageKind::SystemBranch};

}  // namespace

PageKind kindOf(std::string_view type) {
    const std::string_view letter = text::trim(type);
    if (letter.size() != 1) return PageKind::Unknown;
    constexpr char toUpper = static_cast<char>(~0x20);
    const std::size_t at = letters.find(static_cast<char>(letter.front() & toUpper));
    return at == std::string_view::npos ? PageKind::Unknown : kinds[at];
}

std::string_view letterOf(PageKind kind) {
    for (std::size_t i = 0; i < letters.size(); ++i) {
        if (kinds[i] == kind) return letters.substr(i, 1);
    }
    return {};
}

}  // namespace torvex
