#include "modules/forum/TemplateParts.h"

#include <algorithm>

#include "platform/DateTime.h"
#include "platform/text/Text.h"
#include "templates/HTMLTemplate.h"
#include "templates/Markers.h"

namespace torvex {

namespace {

constexpr std::string_view startEnding = "_start";
constexpr std::string_view endEnding = "_end";

template <typename Entry>
const Entry* findIn(const std::vector<std::pair<std::string, Entry>>& entries, std::string_view name) {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [name](const auto& entry) { return text::equals(entry.first, name); });
    return found == entries.end() ? nullptr : &found->second;
}

/// The name without the ending; "" when it has another one.
std::string_view withoutEnding(std::string_view name, std::string_view ending) {
    if (name.size() <= ending.size() || !text::endsWith(name, ending)) return {};
    return name.substr(0, name.size() - ending.size());
}

}  // namespace

TemplateParts& TemplateParts::text(std::string tag, std::string_view plain) {
    return html(std::move(tag), text::htmlEncode(plain));
}

TemplateParts& TemplateParts::html(std::string tag, std::string html) {
    tags_.emplace_back(std::move(tag), std::move(html));
    return *this;
}

TemplateParts& TemplateParts::day(const std::string& prefix, std::string_view date8) {
    const bool isDay = isDate8(date8);
    const std::string_view year = isDay ? date8.substr(0, 4) : std::string_view();
    const std::string_view month = isDay ? date8.substr(4, 2) : std::string_view();
    const std::string_view day = isDay ? date8.substr(6, 2) : std::string_view();
    html(prefix + "_iso",
         isDay ? std::string(year).append("-").append(month).append("-").append(day) : std::string());
    return text(prefix + "_day", day).text(prefix + "_month", month).text(prefix + "_year", year);
}

TemplateParts& TemplateParts::block(std::string name, bool stays) {
    blocks_.emplace_back(std::move(name), stays);
    return *this;
}

const std::string* TemplateParts::tag(std::string_view name) const {
    return findIn(tags_, name);
}

const bool* TemplateParts::stays(std::string_view name) const {
    return findIn(blocks_, name);
}

void TemplateParts::fill(HTMLTemplate& page) const {
    for (const auto& [name, stays] : blocks_) {
        if (stays) {
            page.replaceTag(name + std::string(startEnding), "");
            page.replaceTag(name + std::string(endEnding), "");
        } else {
            page.replaceAllBlocks(name, "");
        }
    }
    for (const auto& [name, html] : tags_) page.replaceTag(name, html);
}

RowTemplate::RowTemplate(std::string text) : text_(std::move(text)) {
    const std::string_view all = text_;
    std::size_t done = 0;
    for (std::size_t at = all.find(markers::opening); at != std::string_view::npos;
         at = all.find(markers::opening, done)) {
        const std::size_t begin = at + markers::opening.size();
        const std::size_t end = all.find(markers::closing, begin);
        if (end == std::string_view::npos) break;
        const std::size_t behind = end + markers::closing.size();
        pieces_.push_back({all.substr(done, at - done), {}});
        pieces_.push_back({all.substr(at, behind - at), all.substr(begin, end - begin)});
        done = behind;
    }
    pieces_.push_back({all.substr(done), {}});
}

void RowTemplate::append(std::string& html, const TemplateParts& parts) const {
    std::string_view left;  // the block that goes, while it lasts
    for (const Piece& piece : pieces_) {
        const std::string_view ended = withoutEnding(piece.name, endEnding);
        if (!left.empty()) {
            if (text::equals(ended, left)) left = {};
            continue;
        }
        const std::string_view begun = withoutEnding(piece.name, startEnding);
        const std::string_view named = begun.empty() ? ended : begun;
        if (const bool* stays = named.empty() ? nullptr : parts.stays(named)) {
            if (!*stays && !begun.empty()) left = begun;
        } else if (const std::string* filled = piece.name.empty() ? nullptr : parts.tag(piece.name)) {
            html += *filled;
        } else {
            html += piece.text;
        }
    }
}

}  // namespace torvex
