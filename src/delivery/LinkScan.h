#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace torvex {

enum class LinkTag { Anchor, Area };

/// What is done with the links of a page. The public side replaces addresses and lets dead links go; other
/// policies (marking them for authors) are other implementations of this.
///
/// Start tags are handed over with every "-->" in them replaced, so that a marker's ">" is not taken for the
/// end of the tag; it is put back behind the policy.
class LinkPolicy {
  public:
    virtual ~LinkPolicy() = default;

    /// Shown every start tag of the page before the first one is rewritten, so that what has to be looked up
    /// for them can be looked up together.
    virtual void prepare(const std::vector<std::string>& startTags) = 0;

    /// The new start tag. "" takes an anchor away, the words in it stay.
    virtual std::string rewrite(std::string startTag, LinkTag kind) = 0;
};

/// The page with every link from "<body" on rewritten: each "<a ...>...</a>" up to the first without an end,
/// then each "<area ...>". Linear in the length of the page.
std::string rewriteLinks(std::string_view html, LinkPolicy& policy);

}  // namespace torvex
