#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/Errors.h"

struct _xmlDoc;  // of libxml2

namespace torvex {

/// Why an XML document or its transformation failed, in one line.
class XmlError : public Error {
  public:
    XmlError(const std::string& description, int code) : Error(description), code_(code) {}

    /// The parser's number of the fault, the status of a fetch that failed, or -1; never 0.
    int code() const { return code_; }

  private:
    int code_;
};

enum class XmlBlanks { Keep, Drop };

/// What one document may be, beside the parser's own bound of 256 elements within each other. Feeds have some
/// thousands of elements at most.
struct XmlLimits {
    int elements = 100'000;
    int attributes = 200'000;
    /// The time of parsing an element grows with the square of their number: this many take milliseconds.
    int attributesOfElement = 1000;
};

/// A parsed document. Parsing reaches nothing outside the text: no file and no address. A document type is
/// read over, but one that declares an entity is refused. Move only; one thread uses it.
class XmlDocument {
  public:
    /// `charset` says over the document what its bytes are in ("" leaves it to the document); a byte order
    /// mark has the last word. `Drop` takes out texts of nothing but blanks, except under
    /// xml:space="preserve". Throws `XmlError`.
    static XmlDocument parse(std::string_view bytes, XmlBlanks blanks, const std::string& charset = {},
                             const XmlLimits& limits = {});

    _xmlDoc* get() const { return document_.get(); }
    /// Gives the document to a library call that frees it.
    _xmlDoc* release() { return document_.release(); }

  private:
    struct Free {
        void operator()(_xmlDoc* document) const;
    };

    explicit XmlDocument(_xmlDoc* document) : document_(document) {}

    std::unique_ptr<_xmlDoc, Free> document_;
};

}  // namespace torvex
