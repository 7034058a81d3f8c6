#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/SharedCell.h"

namespace torvex {

/// The interface of authors as it was built: its files by name ("main-BJm3x1yZ.js"). They are those that the
/// program carries, or, for who works on the interface, those of a folder as they stand at the moment.
/// Safe to share between threads.
class BuiltInterface {
  public:
    using Bytes = std::shared_ptr<const std::string>;
    using Files = std::map<std::string, Bytes, std::less<>>;

    /// What the program carries.
    BuiltInterface();
    /// These files, for as long as the object lives.
    explicit BuiltInterface(const Files& files);
    /// Reads `folder` anew each time.
    explicit BuiltInterface(std::filesystem::path folder);

    /// Null when there is none of that name.
    Bytes file(std::string_view name) const;
    /// Whether there is none at all: a program that was built without it.
    bool isEmpty() const { return folder_.empty() && files_.empty(); }
    /// Whether a file of a name stays as it is for as long as the server runs.
    bool isFixed() const { return folder_.empty(); }

  private:
    /// The program's own bytes are copied when they are first asked for: most servers are asked by visitors alone.
    struct Held {
        std::string_view embedded;
        mutable SharedCell<std::string> text;
    };

    std::filesystem::path folder_;
    std::map<std::string, Held, std::less<>> files_;
};

}  // namespace torvex
