#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "search/extraction/XmlEvents.h"

struct zip;

namespace torvex::catalogue {

/// An archive of files (ZIP), as office programs write them. Reads no more than it is allowed to, however much
/// the archive says that it holds. Throws `ExtractionError` for one that is broken, encrypted or grows too
/// large.
class Archive {
  public:
    /// `bytes` must outlive this.
    explicit Archive(std::string_view bytes, std::uint64_t most = std::uint64_t{256} << 20);
    Archive(const Archive&) = delete;
    Archive& operator=(const Archive&) = delete;
    ~Archive();

    /// Of all its files.
    const std::vector<std::string>& names() const { return names_; }
    bool has(std::string_view name) const;
    /// Reads a file of XML; none there is none.
    void read(const std::string& name, XmlEvents& events);

  private:
    struct zip* archive_ = nullptr;
    std::vector<std::string> names_;
    std::uint64_t left_;
};

}  // namespace torvex::catalogue
