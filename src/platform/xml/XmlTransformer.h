#pragma once

#include <string>

#include "platform/Deadline.h"
#include "platform/Request.h"
#include "platform/xml/XmlDocument.h"

namespace torvex {

/// A document that nobody has looked into yet.
struct XmlText {
    std::string bytes;
    XmlBlanks blanks = XmlBlanks::Keep;
    std::string charset = {};  ///< as `XmlDocument::parse` takes it
};

/// Transforming documents that come from anywhere. Implementations are safe to share between threads.
class XmlTransformer {
  public:
    virtual ~XmlTransformer() = default;

    /// Throws `XmlError` for what is no document.
    virtual void check(const XmlText& document, Deadline deadline) = 0;

    /// Parses both, the stylesheet first, and gives the output; see `transform` in XslTransform.h. Throws
    /// `XmlError`.
    virtual std::string transform(const XmlText& stylesheet, const XmlText& data,
                                  const NamedValues& parameters, Deadline deadline) = 0;
};

}  // namespace torvex
