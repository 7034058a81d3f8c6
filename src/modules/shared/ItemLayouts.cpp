#include "modules/shared/ItemLayouts.h"

#include <algorithm>

#include "modules/shared/ItemText.h"
#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/text/Text.h"
#include "templates/HTMLTemplate.h"
#include "templates/Markers.h"
#include "templates/OptionalBlock.h"

namespace torvex {

namespace {

std::string_view layoutName(const ItemNames& names, int alignment) {
    switch (static_cast<ImageAlignment>(alignment)) {
        case ImageAlignment::Left:
        case ImageAlignment::Alternating:
            return names.imageLeft;
        case ImageAlignment::Right:
            return names.imageRight;
        case ImageAlignment::None:
            return names.noImage;
        case ImageAlignment::Top:
            return names.imageTop;
        case ImageAlignment::Bottom:
            return names.imageBottom;
    }
    return names.fallback;
}

bool isAlternating(int alignment) {
    return alignment == static_cast<int>(ImageAlignment::Alternating);
}

/// The layout with all its tags filled in one pass; what is put in is not looked at again. Tags without a
/// text stay.
std::string filled(std::string_view layout, const ItemLayouts::TagTexts& texts) {
    std::string result;
    std::size_t kept = 0;
    for (std::size_t at = markers::find(layout, markers::opening); at != text::npos;
         at = markers::find(layout, markers::opening, at + 1)) {
        const std::size_t begin = at + markers::opening.size();
        const std::size_t end = layout.find(markers::closing, begin);
        if (end == text::npos) break;
        const std::string_view name = layout.substr(begin, end - begin);
        const auto found = std::find_if(texts.begin(), texts.end(),
                                        [&](const auto& text) { return text::equals(text.first, name); });
        if (found == texts.end()) continue;
        result.append(layout, kept, at - kept);
        markers::checkSize(result.size(), found->second.size());
        result.append(found->second);
        kept = end + markers::closing.size();
    }
    return result.append(layout, kept);
}

std::string encodedPart(const std::string& date, std::size_t at, std::size_t count) {
    return at >= date.size() ? std::string() : text::htmlEncode(date.substr(at, count));
}

}  // namespace

ItemLayouts::ItemLayouts(HostContext& host, HTMLTemplate& source, const ItemNames& names, ItemLooks looks)
    : host_(host), names_(names), looks_(std::move(looks)), spacer_(optionalBlock(source, names.spacer)) {
    source.replaceAllBlocks(names.spacer, "");
    const auto layout = [&](std::string_view name) {
        return optionalBlock(source, source.blockExists(name) ? name : names.fallback);
    };
    noImage_ = layout(names.noImage);
    image_ = layout(layoutName(names, looks_.alignment));
    otherImage_ = isAlternating(looks_.alignment) ? layout(names.imageRight) : image_;
}

bool ItemLayouts::showsImage(const Item& item) const {
    return !item.image.empty() && looks_.alignment != static_cast<int>(ImageAlignment::None);
}

const std::string& ItemLayouts::nextLayout(bool showsImage) {
    if (!showsImage) return noImage_;
    const std::string& layout = isOther_ ? otherImage_ : image_;
    isOther_ = !isOther_;
    return layout;
}

std::string ItemLayouts::draw(const Item& item, const ImageSizes& sizes, MonthNames& months) {
    const bool showsImage = this->showsImage(item);
    std::string layout = nextLayout(showsImage);
    dropTitleForms(layout, item);
    TagTexts texts{{names_.title, text::htmlEncode(item.title)}, {names_.text, item.text}};
    addDate(texts, item.date, months, layout);
    addLink(texts, item);
    if (showsImage) addImage(texts, item.image, sizes);
    return filled(layout, texts);
}

/// An item has a linked title or a plain one.
void ItemLayouts::dropTitleForms(std::string& layout, const Item& item) const {
    markers::replaceBlocks(layout, item.link.empty() ? names_.linkedTitle : names_.title, "");
    if (item.link.empty() || item.linkText.empty()) markers::replaceBlocks(layout, names_.more, "");
}

void ItemLayouts::addImage(TagTexts& texts, const std::string& image, const ImageSizes& sizes) const {
    const ShownImage shown = sizes.shown(image, looks_.limit);
    const std::string address =
        host_.application.text(applicationKey::imagesUrl) + text::htmlEncode(looks_.site + "/" + image);
    texts.emplace_back(names_.image, shown.columnWidth == 0 ? std::string() : address);
    texts.emplace_back(names_.imageColWidth, std::to_string(shown.columnWidth));
    texts.emplace_back(names_.imageWidth, std::to_string(shown.width));
    texts.emplace_back(names_.imageHeight, std::to_string(shown.height));
}

void ItemLayouts::addDate(TagTexts& texts, const std::string& date, MonthNames& months,
                          std::string_view layout) const {
    const std::string month = encodedPart(date, 4, 2);
    texts.emplace_back(names_.day, text::htmlEncode(text::last(date, 2)));
    texts.emplace_back(names_.month, month);
    texts.emplace_back(names_.shortYear, encodedPart(date, 2, 2));
    texts.emplace_back(names_.year, encodedPart(date, 0, 4));
    if (markers::find(layout, markers::tag(names_.monthName)) != text::npos)
        texts.emplace_back(names_.monthName, text::htmlEncode(months.of(month)));
}

void ItemLayouts::addLink(TagTexts& texts, const Item& item) const {
    if (item.link.empty()) return;
    texts.emplace_back(names_.link, linkNotationOf(item.link));
    if (!item.linkText.empty()) texts.emplace_back(names_.more, item.linkText);
}

}  // namespace torvex
