#pragma once

#include <string_view>

#include "search/extraction/Reading.h"

namespace torvex::catalogue {

/// The text of a page, with its title, its language (from MS.LOCALE, else from the page's own tag) and its
/// meta tags as columns: keywords, author and subject are those of documents as well. Scripts and styles are
/// no text. Reads anything.
Reading readHtml(std::string_view bytes);

}  // namespace torvex::catalogue
