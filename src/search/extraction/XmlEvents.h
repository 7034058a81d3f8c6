#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace torvex::catalogue {

/// What a reader of XML is told, in the order of the document. Names come without their prefixes.
class XmlEvents {
  public:
    virtual ~XmlEvents() = default;

    using Attributes = std::vector<std::pair<std::string, std::string>>;

    virtual void startElement(std::string_view name, const Attributes& attributes) = 0;
    virtual void endElement(std::string_view name) = 0;
    virtual void characters(std::string_view text) = 0;
    /// Whether the rest needn't be read.
    virtual bool isDone() const { return false; }
};

/// Reads a document piece by piece, so that none has to be held whole. Entities that it declares aren't known:
/// a document that uses one counts as broken. Nothing else is opened for it.
class XmlFeed {
  public:
    explicit XmlFeed(XmlEvents& events);
    XmlFeed(const XmlFeed&) = delete;
    XmlFeed& operator=(const XmlFeed&) = delete;
    ~XmlFeed();

    /// False when no more is wanted. Throws `ExtractionError` for what is no XML, or is nested too deeply.
    bool add(std::string_view piece);
    void finish();

  private:
    void parse(std::string_view piece, bool isLast);

    struct Parser;
    Parser* parser_;
};

}  // namespace torvex::catalogue
