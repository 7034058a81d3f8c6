#include "modules/shared/ItemLayouts.h"

#include "modules/shared/ItemText.h"
#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/text/Text.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

/// "" when it is missing.
std::string blockOf(const HTMLTemplate& source, std::string_view name) {
    return source.blockExists(name) ? source.extractBlock(name) : std::string();
}

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

std::string encodedPart(const std::string& date, std::size_t at, std::size_t count) {
    return at >= date.size() ? std::string() : text::htmlEncode(date.substr(at, count));
}

}  // namespace

ItemLayouts::ItemLayouts(HostContext& host, HTMLTemplate& source, const ItemNames& names, ItemLooks looks)
    : host_(host), names_(names), looks_(std::move(looks)), spacer_(blockOf(source, names.spacer)) {
    source.replaceAllBlocks(names.spacer, "");
    const auto layout = [&](std::string_view name) {
        return blockOf(source, source.blockExists(name) ? name : names.fallback);
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
    HTMLTemplate layout(host_);
    layout.setStrVal(nextLayout(showsImage));
    if (showsImage) fillImage(layout, item.image, sizes);
    fillDate(layout, item.date, months);
    fillLink(layout, item);
    layout.replaceTag(names_.title, text::htmlEncode(item.title));
    // Last, as it is the longest: nothing that is put in is a marker, so the order doesn't matter otherwise.
    layout.replaceTag(names_.text, item.text);
    return layout.takeStrVal();
}

void ItemLayouts::fillImage(HTMLTemplate& layout, const std::string& image, const ImageSizes& sizes) const {
    const ShownImage shown = sizes.shown(image, looks_.limit);
    const std::string address =
        host_.application.text(applicationKey::imagesUrl) + text::htmlEncode(looks_.site + "/" + image);
    layout.replaceTag(names_.image, shown.columnWidth == 0 ? std::string() : address);
    layout.replaceTag(names_.imageColWidth, std::to_string(shown.columnWidth));
    layout.replaceTag(names_.imageWidth, std::to_string(shown.width));
    layout.replaceTag(names_.imageHeight, std::to_string(shown.height));
}

void ItemLayouts::fillDate(HTMLTemplate& layout, const std::string& date, MonthNames& months) const {
    const std::string month = encodedPart(date, 4, 2);
    layout.replaceTag(names_.day, text::htmlEncode(text::last(date, 2)));
    layout.replaceTag(names_.month, month);
    layout.replaceTag(names_.shortYear, encodedPart(date, 2, 2));
    layout.replaceTag(names_.year, encodedPart(date, 0, 4));
    if (layout.tagExists(names_.monthName))
        layout.replaceTag(names_.monthName, text::htmlEncode(months.of(month)));
}

void ItemLayouts::fillLink(HTMLTemplate& layout, const Item& item) const {
    if (item.link.empty()) {
        layout.replaceAllBlocks(names_.linkedTitle, "");
        return layout.replaceAllBlocks(names_.more, "");
    }
    layout.replaceAllBlocks(names_.title, "");
    layout.replaceTag(names_.link, linkNotationOf(item.link));
    if (item.linkText.empty()) return layout.replaceAllBlocks(names_.more, "");
    layout.replaceTag(names_.more, linkWords(item.linkText, looks_.isHtmlAllowed));
}

}  // namespace torvex
