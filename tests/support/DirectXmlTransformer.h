#pragma once

#include "platform/xml/XmlTransformer.h"
#include "platform/xml/XslTransform.h"

namespace torvex::test {

/// Does the work where it is asked for.
class DirectXmlTransformer final : public XmlTransformer {
  public:
    void check(const XmlText& document, Deadline) override { parsed(document); }

    std::string transform(const XmlText& stylesheet, const XmlText& data, const NamedValues& parameters,
                          Deadline) override {
        XmlDocument first = parsed(stylesheet);
        return torvex::transform({std::move(first), parsed(data), parameters});
    }

  private:
    static XmlDocument parsed(const XmlText& text) {
        return XmlDocument::parse(text.bytes, text.blanks, text.charset);
    }
};

}  // namespace torvex::test
