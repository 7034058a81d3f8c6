#pragma once

#include <optional>
#include <string>

#include "platform/Request.h"
#include "platform/xml/XmlTransformer.h"

namespace torvex {

struct HostContext;
namespace db {
class Connection;
}

/// A feed of XML on its way into the page. Its steps stand apart because visitors and authors are told
/// differently where one fails.
class XmlFeed {
  public:
    /// Reads the register and decides where the two documents come from. Nothing for an unknown feed, and for
    /// one that lacks a document.
    static std::optional<XmlFeed> read(HostContext& host, db::Connection& connection, int feedId);

    /// One try each: reads or fetches. Throw `XmlError` for an address that answers anything but 2xx, other
    /// `Error`s when there is nothing to be had.
    /// A stylesheet's blanks are the transformation's affair: it keeps none but those of xsl:text.
    XmlText loadStylesheet() const { return load(stylesheet_, XmlBlanks::Keep); }
    XmlText loadData() const { return load(data_, blanks_); }

    /// Throws `XmlError` for what isn't a document.
    void check(const XmlText& text) const;
    /// Checks both as well, the stylesheet first. Throws `XmlError`.
    std::string transform(const XmlText& stylesheet, const XmlText& data) const;

  private:
    struct Source {
        std::string place;  ///< a path or an address; "" for none
        bool isFile = false;
    };

    explicit XmlFeed(HostContext& host) : host_(&host) {}

    Source sourceOf(const std::string& site, const std::string& file, const std::string& address) const;
    void addQuery(Source& source) const;
    XmlText load(const Source& source, XmlBlanks blanks) const;
    XmlText loadFile(const std::string& path, XmlBlanks blanks) const;
    XmlText fetch(const std::string& address, XmlBlanks blanks) const;

    HostContext* host_;
    Source stylesheet_;
    Source data_;
    XmlBlanks blanks_ = XmlBlanks::Drop;
    NamedValues parameters_;
    std::string query_;  ///< what dynamic addresses are asked with
};

}  // namespace torvex
