#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace torvex {

// The places for words in the master templates of the interface: "<label-html-0005>" holds the word as HTML
// whose blanks don't break, "<label-js-0005>" the word for a string of a script. Whatever stands in place of
// "html" counts; any case does.

/// The labels that a text has tags for, in their order; one may stand there several times. None when a tag
/// names no number.
std::vector<double> labelsIn(std::string_view text);

/// The text with its tags filled from `words`; a label without a word is filled with nothing. A text in which
/// a tag names no number is given back as it is.
std::string translateLabels(std::string_view text, const std::map<double, std::string>& words);

}  // namespace torvex
