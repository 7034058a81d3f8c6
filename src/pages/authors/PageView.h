#pragma once

#include <string>
#include <string_view>

namespace torvex {

// A page that was made for its authors, as it goes into the frame of the interface.

/// Every frame within the page is a grey box that says what stands there: a document of this origin in it could
/// reach the interface around the page. `sentence` is the words for it, with the place {address}. What the
/// view's policy forbids anyhow isn't there to be complained about: scripts are gone, and handlers of events
/// ("onclick") stand in attributes that nobody runs ("data-onclick").
std::string forEditing(std::string_view html, std::string_view sentence);

/// With the script, ahead of every other, that hands calls of links to the interface.
std::string withLinkScript(std::string html);

}  // namespace torvex
