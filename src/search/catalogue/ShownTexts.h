#pragma once

#include <string>
#include <string_view>

#include "platform/files/DiskFileSystem.h"
#include "search/catalogue/Entry.h"

namespace torvex::catalogue {

/// The texts of entries, to show what stands around the words found. Those of snapshots are read from their
/// files: as these are now, which may be later than the catalogue. Used by one thread.
class ShownTexts {
  public:
    explicit ShownTexts(std::string_view installPath);

    /// The beginning, as far as abstracts look; "" for what can't be read any more.
    std::string of(const Entry& entry) const;

  private:
    std::string root_;
    DiskFileSystem files_;
};

}  // namespace torvex::catalogue
