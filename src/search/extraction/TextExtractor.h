#pragma once

#include <string>
#include <string_view>

#include "platform/Errors.h"
#include "search/extraction/Reading.h"

namespace torvex::catalogue {

/// A file whose text can't be had: it is broken, encrypted, or takes too much time or memory.
class ExtractionError : public Error {
  public:
    using Error::Error;
};

/// Nothing is read any more, as the server is about to end. It says nothing of the file.
class ReadingEnded : public Error {
  public:
    ReadingEnded() : Error("the server is about to end") {}
};

/// Reads the text out of files. Implementations are safe to share between threads.
class TextExtractor {
  public:
    virtual ~TextExtractor() = default;

    /// By the name's ending; nothing but the name for a kind that isn't known. Throws `ExtractionError`,
    /// `ReadingEnded`.
    virtual Reading read(const std::string& fileName, std::string_view bytes) = 0;
};

/// Whether files of this name have a text that can be read.
bool hasReadableText(std::string_view fileName);

/// Reads it in this process. What a file does to the libraries that read it, it does to the process.
class DirectExtractor final : public TextExtractor {
  public:
    Reading read(const std::string& fileName, std::string_view bytes) override;
};

}  // namespace torvex::catalogue
