#pragma once

#include <string>

#include "platform/Value.h"
#include "platform/db/ConnectionSource.h"

namespace torvex {

struct HostContext;

/// A message board: dated items in a tree of categories, drawn into the template of an application page. An
/// object lives for one request and is used by one thread. Failures are `Error` with the operation's line in
/// front.
class msgBoard {
  public:
    explicit msgBoard(HostContext& host) : host_(host) {}

    void connect(db::ConnectionSource connection) { connection_ = std::move(connection); }

    /// `html` with the way to a category, the categories below it and a page of its items in their blocks.
    /// `mode` "" is for visitors, "D" for authors of the design, any other for authors who look at what is
    /// live. `catRoot` is the top of what is shown, `subCat` the category, "" the top itself. Without the
    /// blocks when there is no such category.
    std::string load(const std::string& site, const std::string& lang, const std::string& mode,
                     const std::string& catRoot, const std::string& subCat, bool archive, int pageTo,
                     const std::string& html);
    /// All categories of a website by their paths: path, title and, in mode "D", the mark for deletion.
    Value getCategoryList(const std::string& site, const std::string& lang, const std::string& mode);
    /// Brings what has changed in a category to visitors, with the categories below it and the items on
    /// demand: "" done, "1" a category above isn't live, "-99" it failed. Nothing changes then.
    std::string publish(const std::string& site, const std::string& lang, const std::string& catId,
                        bool includeSubcat, bool includeItems);

  private:
    HostContext& host_;
    db::ConnectionSource connection_;
};

}  // namespace torvex
