#include "cli/InitCommand.h"

#include <array>
#include <filesystem>
#include <fmt/format.h>
#include <ostream>
#include <vector>

#include "accounts/CommonPasswords.h"
#include "cli/GeneratedPassword.h"
#include "cli/InterfaceRenewal.h"
#include "cli/OpenInstallation.h"
#include "cli/StarterSite.h"
#include "cli/Team.h"
#include "cli/UsageError.h"
#include "installation/Installation.h"
#include "installation/NewDatabase.h"
#include "installation/NewFiles.h"
#include "installation/SettingsFile.h"
#include "installation/Setup.h"
#include "installation/Undo.h"
#include "platform/DateTime.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/text/Text.h"
#include "search/Search.h"
#include "search/designs/PageIndex.h"

namespace torvex::cli {

namespace fs = std::filesystem;

namespace {

/// What an installation consists of, besides its settings file.
constexpr std::array<const char*, 6> ownNames = {"data",   "baseTemplates", "contentTemplates",
                                                 "torvex", "wwwroot",       "search"};

constexpr std::array<const char*, 8> folders = {
    "baseTemplates",  "contentTemplates",  "torvex/templates/gen",  "wwwroot/stylesheets",
    "wwwroot/images", "wwwroot/documents", "wwwroot/torvex/images", "search/html"};

constexpr std::string_view setStore = "update TORVEX_SETUP set value = ? where parameter = ? and loginId = 0";

constexpr std::string_view selectWebsites =
    "select site, lang, title from TORVEX_SITES_LANGUAGES order by site, lang";

PasswordStore passwordStoreOf(const InitOptions& options) {
    const bool isEmpty = options.content == FirstContent::Empty;
    return options.passwords.value_or(isEmpty ? PasswordStore::Given : PasswordStore::Strong);
}

/// Absolute, without "..", links or a "/" at its end.
fs::path plainPath(const std::string& given) {
    const fs::path path = fs::weakly_canonical(fs::absolute(given)).lexically_normal();
    return path.has_filename() ? path : path.parent_path();
}

void refuseTakenNames(const fs::path& folder) {
    std::error_code error;
    if (fs::exists(folder / settingsFileName, error)) {
        throw Error(
            fmt::format("{} holds an installation already. Nothing was changed. Serve it with \"torvex "
                        "serve --install {}\", or name another folder",
                        folder.string(), folder.string()));
    }
    if (fs::exists(folder, error) && !fs::is_directory(folder, error)) {
        throw Error(fmt::format("{} is a file, not a folder. Nothing was changed", folder.string()));
    }
    for (const char* name : ownNames) {
        if (!fs::exists(fs::symlink_status(folder / name, error))) continue;
        throw Error(
            fmt::format("{} holds {} already, which an installation would make. Nothing was changed. "
                        "Name another folder",
                        folder.string(), name));
    }
}

void checkPassword(const InitOptions& options) {
    if (options.adminPassword && text::trim(*options.adminPassword).empty()) {
        throw UsageError("--admin-password: a password can't be empty");
    }
}

/// Whose passwords are made, besides the administrator's.
struct FirstPeople {
    std::vector<TeamMember> team;
    std::vector<TeamMember> visitors;

    bool empty() const { return team.empty() && visitors.empty(); }
};

class Maker {
  public:
    Maker(const InitOptions& options, Installation& installation, db::Database& database)
        : options_(options), installation_(installation), database_(database) {}

    FirstPeople make(const std::string& password) {
        noteWhatIsMade();
        makeDatabaseTables(installation_, database_, clock_, undo_);
        auto people = insertFirstRows(password);
        layDownFiles();
        makeWebsiteFolders();
        makeInterfaces(installation_, *installation_.openDatabase(database_));
        // Last of all, since a folder with this file counts as an installation.
        writeNewFile(folder() / settingsFileName, settingsFileText(options_.database), Readers::Owner);
        undo_.keep();
        return people;
    }

  private:
    const fs::path& folder() const { return installation_.folder(); }

    void noteWhatIsMade() {
        undo_.removeWhatIsMade(folder());
        for (const char* name : ownNames) undo_.removeWhatIsMade(folder() / name);
        undo_.removeWhatIsMade(folder() / settingsFileName);
    }

    FirstPeople insertFirstRows(const std::string& password) {
        const auto connection = installation_.openDatabase(database_);
        db::Transaction transaction(*connection);
        insertFixedRows(*connection);
        const PasswordStore store = passwordStoreOf(options_);
        givePassword(*connection, store, "sa", password);
        if (store == PasswordStore::Strong)
            connection->execute(setStore, {strongStore, applicationKey::passwordStore});
        if (options_.content == FirstContent::Demo) {
            insertRows(*connection, "demo/rows/", wordsForDemo(clock_));
        }
        if (options_.content == FirstContent::Starter) {
            insertRows(*connection, "starter/rows/", wordsForRows(options_.starter, clock_));
        }
        FirstPeople people{unlockTeam(*connection, store), unlockVisitors(*connection, store)};
        transaction.commit();
        return people;
    }

    void layDownFiles() {
        for (const char* name : folders) makeFolder(folder() / name);
        layDown("files/", folder());
        if (options_.content == FirstContent::Demo) layDownDemo();
        if (options_.content == FirstContent::Starter) {
            layDownFor("starter/", options_.starter, wordsForHtml(options_.starter));
        }
    }

    void layDownDemo() {
        layDown("demo/", folder());
        for (const NewWebsite& website : websites()) {
            Words words = wordsOfLines(installFile(fmt::format("demo/shared/words/{}.txt", website.lang)));
            for (Word& word : wordsForHtml(website)) words.push_back(std::move(word));
            layDownFor("demo/shared/", website, words);
        }
    }

    /// For files that have no website of their own: "contentTemplates/page.html" and so on.
    void layDownFor(std::string_view prefix, const NewWebsite& website, const Words& words) {
        for (const InstallFile& file : installFiles(prefix)) {
            const fs::path name(file.name().substr(prefix.size()));
            if (*name.begin() == "rows" || *name.begin() == "words") continue;
            const fs::path place = name.parent_path() / website.site / website.lang;
            writeNewFile(folder() / place / name.filename(), withWords(file.bytes(), words));
        }
    }

    void makeWebsiteFolders() {
        for (const auto& [site, lang, title] : websites()) {
            for (const char* parent : {"wwwroot/images", "wwwroot/documents"})
                makeFolder(folder() / parent / site);
            for (const char* parent : {"baseTemplates", "contentTemplates", "wwwroot/stylesheets"}) {
                makeFolder(folder() / parent / site / lang);
            }
        }
    }

    std::vector<NewWebsite> websites() {
        const auto connection = installation_.openDatabase(database_);
        auto rows = connection->query(selectWebsites);
        std::vector<NewWebsite> found;
        while (rows.next()) found.push_back({rows.text("site"), rows.text("lang"), rows.text("title")});
        return found;
    }

    const InitOptions& options_;
    Installation& installation_;
    db::Database& database_;
    SystemClock clock_;
    Undo undo_;
};

/// The search of a site reads copies of its pages, and that of authors their words: with them there is something
/// to be found from the start.
void writeFirstSnapshots(const fs::path& folder, const Environment& environment) {
    OpenInstallation opened(Installation::open(folder.string(), environment));
    opened.runWithoutVisitor([&](HostContext& host) {
        Setup(host).deriveApplication();
        const auto connection = opened.installation.openCurrentDatabase(*opened.database);
        Search search(host);
        search.connect(*connection);
        search.initializePages();
        indexMissingPages(host, *connection);
    });
}

std::string contentText(const InitOptions& options) {
    if (options.content == FirstContent::Demo) return "with the demo sites";
    if (options.content == FirstContent::Empty) return "without a site";
    return fmt::format("with the site \"{}\" ({}.{})", options.starter.title, options.starter.site,
                       options.starter.lang);
}

void reportPasswords(const InitOptions& options, const std::string& password, const FirstPeople& people,
                     std::ostream& out) {
    if (!options.adminPassword) {
        out << fmt::format("\nThe system administrator is \"sa\" with the password\n\n    {}\n", password);
    }
    if (!people.team.empty()) {
        out << "\nThe team, each with a password and with the rights of a role:\n\n"
            << teamTable(people.team);
    }
    if (!people.visitors.empty()) {
        out << "\nVisitors, each with a password for the pages of their groups:\n\n"
            << teamTable(people.visitors);
    }
    if (options.adminPassword && people.empty()) return;
    out << (people.empty()
                ? "\nIt is shown this once and kept nowhere. Case doesn't matter in it.\n"
                : "\nPasswords are shown this once and kept nowhere. Case doesn't matter in them.\n");
}

std::string_view storeText(const InitOptions& options) {
    if (passwordStoreOf(options) == PasswordStore::Strong)
        return "\nPasswords are kept as strong hashes. For the form that other programs read, make an "
               "installation\nwith \"--passwords given\".\n";
    return "\nPasswords are kept in the form that other programs read. \"--passwords strong\" keeps them as "
           "strong\nhashes; docs/passwords.md tells how to change to it later.\n";
}

/// It is the owner's to choose, on a machine that nobody else can reach.
void warnOfCommonPassword(const InitOptions& options, std::ostream& err) {
    if (!options.adminPassword || !isCommonPassword(*options.adminPassword)) return;
    err << "torvex: the password of \"sa\" is one of the 100,000 commonest: it would be guessed at once\n";
}

void report(const InitOptions& options, const fs::path& folder, const std::string& password,
            const FirstPeople& people, std::ostream& out) {
    out << fmt::format("Made an installation {} in {}\n", contentText(options), folder.string());
    reportPasswords(options, password, people, out);
    out << storeText(options);
    out << fmt::format(
        "\nServe it with:  torvex serve --install {}\nAuthors work at /torvex/ of its address.\n",
        folder.string());
}

}  // namespace

ExitCode init(const InitOptions& options, const Environment& environment, const Terminal& terminal) {
    checkPassword(options);
    if (options.content == FirstContent::Starter) checkStarterSite(options.starter);
    const fs::path folder = plainPath(options.folder);
    refuseTakenNames(folder);

    Settings settings;
    settings.database.url = options.database;
    settings.database.password = environment("TORVEX_DATABASE_PASSWORD").value_or("");
    Installation installation(folder, std::move(settings));
    const auto database = db::makeDatabase();
    refuseTakenDatabase(installation, *database);

    const std::string password = options.adminPassword ? *options.adminPassword : generatePassword();
    const auto people = Maker(options, installation, *database).make(password);
    if (options.content != FirstContent::Empty) writeFirstSnapshots(folder, environment);
    report(options, folder, password, people, terminal.out);
    warnOfCommonPassword(options, terminal.err);
    return ExitCode::Ok;
}

}  // namespace torvex::cli
