#pragma once

#include <filesystem>
#include <string_view>
#include <utility>
#include <vector>

#include "installation/InstallFiles.h"

namespace torvex {

/// Who may read what is made: everyone whom the process's mask lets in, or its owner alone.
enum class Readers { All, Owner };

/// Makes the folder and its missing parents. Throws `Error`.
void makeFolder(const std::filesystem::path& folder, Readers readers = Readers::All);

/// Writes a file that isn't there yet, making its folder. Throws `Error`, also when the file is there.
void writeNewFile(const std::filesystem::path& file, std::string_view bytes, Readers readers = Readers::All);

/// Words in braces that stand in a file for what an installation chooses, "{{title}}".
using Word = std::pair<std::string_view, std::string>;
using Words = std::vector<Word>;

std::string withWords(std::string_view text, const Words& words);

/// The words of a file that gives each a line, "name: text"; their names lie in `lines`.
Words wordsOfLines(std::string_view lines);

/// Writes the program's files below `prefix` to `folder`, under the same names. Those below `rows/` are for
/// the database, those below `shared/` for several websites at once, and `README.md` is for whoever works on
/// them: all these are left out.
void layDown(std::string_view prefix, const std::filesystem::path& folder);

}  // namespace torvex
