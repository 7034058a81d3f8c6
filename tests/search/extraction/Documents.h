#pragma once

#include <string>
#include <utility>
#include <vector>

namespace torvex::test {

/// Files in an archive: names and contents.
using ArchiveFiles = std::vector<std::pair<std::string, std::string>>;

/// A ZIP archive; with a password every file in it is encrypted.
std::string archiveOf(const ArchiveFiles& files, const std::string& password = "");

std::string docxOf(const std::string& body, const ArchiveFiles& more = {});
std::string odtOf(const std::string& body, const ArchiveFiles& more = {});

/// A PDF of one page with this line, and further entries of its trailer.
std::string pdfOf(const std::string& line, const std::string& trailer = "");
/// One whose signs (two bytes each, in hexadecimal digits) say what letters they are by a map alone, as those
/// of cut down fonts do. `map` is the middle of a character map.
std::string mappedPdf(const std::string& signs, const std::string& map);
/// One that opens with a password alone.
std::string lockedPdf();

}  // namespace torvex::test
