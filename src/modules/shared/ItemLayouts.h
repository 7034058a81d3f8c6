#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "modules/shared/ImageSizes.h"
#include "modules/shared/MonthNames.h"

namespace torvex {

class HTMLTemplate;
struct HostContext;

/// The blocks and tags of a template that shows dated items with pictures. Each module has names of its own.
struct ItemNames {
    // Blocks with the layouts of an item, and what falls back to the first of them
    std::string_view fallback, noImage, imageLeft, imageRight, imageTop, imageBottom;
    std::string_view spacer;  ///< block between two items
    // Tags in a layout
    std::string_view image, imageColWidth, imageWidth, imageHeight;
    std::string_view text, day, month, shortYear, year, monthName;
    std::string_view title;        ///< tag, and the block of a title that is no link
    std::string_view linkedTitle;  ///< the block of one that is
    std::string_view link;
    std::string_view more;  ///< tag and block of the link's words
};

/// Where the picture of an item stands.
enum class ImageAlignment { Left = 1, Right = 2, Alternating = 3, None = 4, Top = 5, Bottom = 6 };

/// An item as its record tells it, but for its text and the words of its link, which are HTML already.
struct Item {
    std::string title, text, image, date, link, linkText;
};

/// What all items of a list have in common.
struct ItemLooks {
    std::string site;
    int alignment = 0;  ///< an `ImageAlignment`; what is none takes the layout that others fall back to
    ImageSize limit;    ///< of pictures
};

/// Draws the items of one list in the layouts of a template, one after the other. Lives for one list.
class ItemLayouts {
  public:
    /// The names of tags and what they are filled with.
    using TagTexts = std::vector<std::pair<std::string_view, std::string>>;

    /// Takes the layouts out of the template, and the spacer away from it.
    ItemLayouts(HostContext& host, HTMLTemplate& source, const ItemNames& names, ItemLooks looks);

    /// Whether the item is drawn with its picture.
    bool showsImage(const Item& item) const;
    std::string draw(const Item& item, const ImageSizes& sizes, MonthNames& months);
    const std::string& spacer() const { return spacer_; }

  private:
    const std::string& nextLayout(bool showsImage);
    void dropTitleForms(std::string& layout, const Item& item) const;
    void addImage(TagTexts& texts, const std::string& image, const ImageSizes& sizes) const;
    void addDate(TagTexts& texts, const std::string& date, MonthNames& months, std::string_view layout) const;
    void addLink(TagTexts& texts, const Item& item) const;

    HostContext& host_;
    const ItemNames& names_;
    const ItemLooks looks_;
    std::string spacer_;
    std::string noImage_;
    std::string image_;
    std::string otherImage_;  ///< of each second item, where they alternate
    bool isOther_ = false;
};

}  // namespace torvex
