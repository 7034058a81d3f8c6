#pragma once

#include <optional>
#include <string>

#include "platform/Request.h"
#include "platform/xml/XmlDocument.h"

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

    /// One try each: reads or fetches, and parses. Throw `XmlError` for a document that isn't one or an
    /// address that answers anything but 2xx, other `Error`s when there is nothing to be had.
    /// A stylesheet's blanks are the transformation's affair: it keeps none but those of xsl:text.
    XmlDocument loadStylesheet() const { return load(stylesheet_, XmlBlanks::Keep); }
    XmlDocument loadData() const { return load(data_, blanks_); }

    /// Throws `XmlError`.
    std::string transform(XmlDocument stylesheet, XmlDocument data) const;

  private:
    struct Source {
        std::string place;  ///< a path or an address; "" for none
        bool isFile = false;
    };

    explicit XmlFeed(HostContext& host) : host_(&host) {}

    Source sourceOf(const std::string& site, const std::string& file, const std::string& address) const;
    void addQuery(Source& source) const;
    XmlDocument load(const Source& source, XmlBlanks blanks) const;
    XmlDocument loadFile(const std::string& path, XmlBlanks blanks) const;
    XmlDocument fetch(const std::string& address, XmlBlanks blanks) const;

    HostContext* host_;
    Source stylesheet_;
    Source data_;
    XmlBlanks blanks_ = XmlBlanks::Drop;
    NamedValues parameters_;
};

}  // namespace torvex
