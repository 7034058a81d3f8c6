#include "operations/register/RegistersRows.h"

namespace torvex::operations {

namespace {

/// What refusals say to people: see install/rows/08_words_uploads.sql.
namespace label {
inline constexpr CodeLabel folderGone{5385, "gone"};
inline constexpr CodeLabel folderNameTaken{5386, "name-taken"};
inline constexpr CodeLabel nameMissing{5387, "name-missing"};
inline constexpr CodeLabel fileGone{5388, "gone"};
inline constexpr CodeLabel titleTaken{5389, "title-taken"};
inline constexpr CodeLabel titleMissing{5390, "title-missing"};
inline constexpr CodeLabel otherType{5391, "other-type"};
inline constexpr CodeLabel fileExists{5392, "exists"};
inline constexpr CodeLabel moveGone{5393, "gone"};
inline constexpr CodeLabel titleTakenThere{5394, "title-taken"};
}  // namespace label

Right editMedia() {
    return mediaAccess("edit", "folderType", "site");
}

std::vector<Row<registers>> lists() {
    return {
        reads("getFolders", &registers::getFolders, {argument("site"), argument("folderType")},
              "Every media folder of a site, and how many files lie in each.", anyLogin())
            .lists(
                {{"folder", Text}, {"name", Text}, {"parent", Text}, {"level", Number}, {"files", Number}}),
        reads("getMedia", &registers::getMedia,
              {argument("site"), argument("folderType"), argument("folder", ""), argument("words", ""),
               argument("from", 0.0)},
              "The files of a media folder and those below it that hold the words; 500 from a row on. An "
              "alternative text that is empty, not missing, says that the picture is decoration.",
              anyLogin())
            .lists({{"folder", Text},
                    {"path", Text},
                    {"title", Text},
                    {"type", Text},
                    {"size", Number},
                    {"width", Number},
                    {"height", Number},
                    {"alt", Text}}),
        reads("checkUpload", &registers::checkUpload,
              {argument("site"), argument("folderType"), argument("folder"), argument("filename")},
              "Whether a file may come into a media folder under its name.", editMedia())
            .codes({code("0", "It may."), refusal("-1", "There is no such folder.", label::folderGone),
                    refusal("exists", "A file of this name is there.", label::fileExists)}),
    };
}

std::vector<Row<registers>> changes() {
    return {
        writes("renameFolder", &registers::renameFolder,
               {argument("site"), argument("folderType"), argument("folder"), argument("name"),
                argument("advId", 0)},
               "Gives a media folder another name.", editMedia())
            .codes({code(0, "It has the name."), refusal(-1, "The folder is gone.", label::folderGone),
                    refusal(-2, "A folder beside it has this name.", label::folderNameTaken),
                    refusal(-3, "A name is missing.", label::nameMissing), notLoggedIn(), failed()}),
        writes("saveMedia", &registers::saveMedia,
               {argument("site"), argument("folderType"), argument("path"), argument("title"),
                argument("alt", "-1"), argument("advId", 0)},
               "Saves title and alternative text of a file; -1 leaves the alternative text as it is.",
               editMedia())
            .codes({code(0, "It is saved."), refusal(-1, "The file is gone.", label::fileGone),
                    refusal(-2, "Another file of the folder has this title.", label::titleTaken),
                    refusal(-3, "A title is missing.", label::titleMissing), notLoggedIn(), failed()}),
        writes("replaceMedia", &registers::replaceMedia,
               {argument("site"), argument("folderType"), argument("path"), argument("by", ""),
                argument("advId", 0)},
               "Puts another file in the place of a file; without one, notes what lies there now.",
               editMedia())
            .codes({code(0, "It is replaced."), refusal(-1, "One of the files is gone.", label::fileGone),
                    refusal(-2, "The two files are not of one type.", label::otherType), notLoggedIn(),
                    failed()}),
        writes("moveMedia", &registers::moveMedia,
               {argument("site"), argument("folderType"), argument("path"), argument("folder"),
                argument("advId", 0)},
               "Brings a file into another folder; the pages that show it or lead to it follow.", editMedia())
            .codes({code(0, "It is there."), refusal(-1, "File or folder are gone.", label::moveGone),
                    refusal(-2, "A file of the folder has its title.", label::titleTakenThere),
                    refusal("exists", "A file of its name is there.", label::fileExists), notLoggedIn(),
                    failed()}),
        writes("deleteMedia", &registers::deleteMedia,
               {argument("site"), argument("folderType"), argument("path"), argument("advId", 0)},
               "Removes a file.", editMedia())
            .codes({code(0, "It is removed."), refusal(-1, "The file is gone.", label::fileGone),
                    notLoggedIn(), failed()}),
    };
}

}  // namespace

std::vector<Row<registers>> registersMediaRows() {
    return joined({lists(), changes()});
}

std::vector<Row<registers>> registersRecordRows() {
    return {
        // The record decides which right is needed, so the operation itself asks for it.
        writes("open", &registers::open, {argument("item"), argument("id")},
               "Takes an administrative record for this session where the login may change it: whether it "
               "is \"held\" now, \"other\" has it, there is \"noRight\", or it is \"gone\"; and who has it.",
               anyLogin())
            .lists({{"state", Text}, {"loginId", Number}, {"name", Text}}),
    };
}

}  // namespace torvex::operations
