#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/text/Text.h"

namespace torvex {
namespace db {
class Connection;
}

/// Pixels; as a limit, 0 and less is none.
struct ImageSize {
    int width = 0;
    int height = 0;
};

/// How a picture is shown.
struct ShownImage {
    int columnWidth = 0;  ///< of the column that it stands in; 0 for a picture that isn't registered
    int width = 0;
    int height = 0;
};

/// The picture made to fit: only ever smaller, and never out of shape.
ShownImage shownImage(const ImageSize& image, const ImageSize& limit);

/// The sizes of a site's pictures, by the names of their files.
class ImageSizes {
  public:
    /// Looks all of them up together.
    ImageSizes(db::Connection& connection, std::string_view site, const std::vector<std::string>& filenames);

    /// All 0 for a picture that isn't registered.
    ShownImage shown(const std::string& filename, const ImageSize& limit) const;

  private:
    struct Before {
        bool operator()(const std::string& one, const std::string& other) const {
            return text::compare(one, other) < 0;
        }
    };

    std::map<std::string, ImageSize, Before> sizes_;
};

}  // namespace torvex
