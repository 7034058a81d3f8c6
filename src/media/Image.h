#pragma once

#include <string>

namespace torvex {
struct HostContext;

/// Tells the kind and the size of a picture by the first bytes of its file. An object is made for one request
/// and used by one thread.
///
/// What can't be read or isn't a picture changes nothing: the properties keep what they held, and nothing is
/// raised.
class Image {
  public:
    explicit Image(HostContext& host) : host_(host) {}

    /// The path of the last file that was recognised.
    const std::string& filename() const { return filename_; }
    /// Reads the file. Its name must end in .gif, .bmp, .png, .jpg or .jpeg; which of these it is, its
    /// contents tell.
    void setFilename(const std::string& value);
    const std::string& filetype() const { return filetype_; }  ///< "GIF", "BMP", "PNG", "JPG", or ""
    double size() const { return size_; }                      ///< bytes
    double width() const { return width_; }                    ///< pixels
    double height() const { return height_; }                  ///< pixels
    double depth() const { return depth_; }                    ///< the number of colours

  private:
    void read(const std::string& path);

    HostContext& host_;
    std::string filename_;
    std::string filetype_;
    double size_ = 0;
    double width_ = 0;
    double height_ = 0;
    double depth_ = 0;
};

}  // namespace torvex
