#include "cli/InterfaceRenewal.h"

#include <array>

#include "administration/InterfaceFiles.h"
#include "installation/FirstRows.h"
#include "installation/InstallFiles.h"
#include "installation/Installation.h"
#include "installation/NewFiles.h"
#include "platform/db/Connection.h"
#include "platform/files/DiskFileSystem.h"

namespace torvex::cli {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view selectLanguages = "select lang_id from TORVEX_INTERFACE_LANGUAGES order by id";
constexpr std::string_view countWords = "select count(*) as words from TORVEX_INTERFACE_VOCAB";

/// Each adds what is missing and leaves what is there.
constexpr std::array<std::string_view, 2> rowsOfWords{"rows/05_vocabulary.sql", "rows/08_words_"};

/// What nobody but the program writes, in the folder of an installation.
constexpr std::string_view folderOfFiles = "files/";
constexpr std::array<std::string_view, 2> ownFolders{"files/torvex/templates/gen/", "files/wwwroot/torvex/"};

std::size_t wordsIn(db::Connection& connection) {
    auto rows = connection.query(countWords);
    return rows.next() ? static_cast<std::size_t>(rows.number("words")) : 0;
}

std::size_t addWords(db::Connection& connection) {
    const std::size_t before = wordsIn(connection);
    db::Transaction transaction(connection);
    for (const std::string_view rows : rowsOfWords) insertRows(connection, rows);
    const std::size_t added = wordsIn(connection) - before;
    transaction.commit();
    return added;
}

bool renewFile(DiskFileSystem& files, const fs::path& target, std::string_view bytes) {
    if (files.readBytes(target.string()) == bytes) return false;
    makeFolder(target.parent_path());
    files.writeBytes(target.string(), bytes);
    return true;
}

std::size_t renewFiles(const fs::path& folder) {
    DiskFileSystem files({folder.string()});
    std::size_t renewed = 0;
    for (const std::string_view own : ownFolders) {
        for (const InstallFile& file : installFiles(own)) {
            const fs::path target = folder / file.name().substr(folderOfFiles.size());
            if (renewFile(files, target, file.bytes())) ++renewed;
        }
    }
    return renewed;
}

}  // namespace

void makeInterfaces(const Installation& installation, db::Connection& connection) {
    const std::string templates = (installation.folder() / "torvex/templates").string() + "/";
    DiskFileSystem files({installation.folder().string()});
    auto languages = connection.query(selectLanguages);
    while (languages.next()) {
        const auto made = translatedInterface(files, connection, templates, languages.text("lang_id"));
        for (const std::string& folder : made.folders) makeFolder(folder);
        files.writeTexts(made.files, TextFormat::Unicode);
    }
}

Renewed renewInterface(const Installation& installation, db::Connection& connection) {
    const Renewed renewed{addWords(connection), renewFiles(installation.folder())};
    if (!renewed.isNothing()) makeInterfaces(installation, connection);
    return renewed;
}

}  // namespace torvex::cli
