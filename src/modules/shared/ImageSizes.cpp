#include "modules/shared/ImageSizes.h"

#include <algorithm>
#include <cstdint>

#include "platform/db/ValueList.h"

namespace torvex {

namespace {

/// Most lists show a few pictures.
constexpr std::size_t shortList = 4;

std::string selectSizes(std::size_t count) {
    return "select img_filename, img_width, img_height from TORVEX_IMAGES where img_site = ? and "
           "img_filename in (" +
           db::placesOfList("?", count) + ") order by imgId";
}

/// The whole part of `length` scaled by a fraction.
int scaled(int length, int numerator, int denominator) {
    return static_cast<int>(static_cast<std::int64_t>(length) * numerator / denominator);
}

bool exceeds(int length, int limit) {
    return limit > 0 && length > limit;
}

/// Whether fitting the width makes the picture smaller than fitting the height: the smaller of two
/// fractions, without dividing, so that whole pixels come out whole.
bool isWidthTighter(const ImageSize& image, const ImageSize& limit) {
    return static_cast<std::int64_t>(limit.width) * image.height <=
           static_cast<std::int64_t>(limit.height) * image.width;
}

}  // namespace

ShownImage shownImage(const ImageSize& image, const ImageSize& limit) {
    const int column = limit.width > 0 ? limit.width : image.width;
    const bool tooWide = exceeds(image.width, limit.width);
    const bool tooHigh = exceeds(image.height, limit.height);
    if (tooWide && (!tooHigh || isWidthTighter(image, limit)))
        return {column, limit.width, scaled(image.height, limit.width, image.width)};
    if (tooHigh) return {column, scaled(image.width, limit.height, image.height), limit.height};
    return {column, image.width, image.height};
}

ImageSizes::ImageSizes(db::Connection& connection, std::string_view site,
                       const std::vector<std::string>& filenames) {
    static const std::string selectFew = selectSizes(shortList);
    static const std::string selectMany = selectSizes(db::listLength);
    const std::size_t length = filenames.size() <= shortList ? shortList : db::listLength;
    for (std::size_t from = 0; from < filenames.size(); from += length) {
        const std::size_t end = std::min(from + length, filenames.size());
        std::vector<db::Parameter> values{site};
        for (std::size_t i = from; i < end; ++i) values.emplace_back(filenames[i]);
        values.resize(length + 1, values.back());
        auto rows = connection.query(length == shortList ? selectFew : selectMany, values);
        while (rows.next()) {
            sizes_.emplace(rows.text("img_filename"), ImageSize{static_cast<int>(rows.number("img_width")),
                                                                static_cast<int>(rows.number("img_height"))});
        }
    }
}

ShownImage ImageSizes::shown(const std::string& filename, const ImageSize& limit) const {
    const auto found = sizes_.find(filename);
    return found == sizes_.end() ? ShownImage() : shownImage(found->second, limit);
}

}  // namespace torvex
