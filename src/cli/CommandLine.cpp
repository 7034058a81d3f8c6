#include "cli/CommandLine.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <ostream>

#include "cli/HelpTexts.h"
#include "cli/UsageError.h"
#include "cli/Version.h"
#include "platform/text/Text.h"

namespace torvex::cli {

namespace {

/// The text of a command's own help stands in front of it; the list of commands has a line for each. Options
/// are listed without the ones that they exclude, which makes lines of their own.
class HelpFormatter final : public CLI::Formatter {
  public:
    void describe(const CLI::App* app, const char* text) { texts_.emplace_back(app, text); }

    std::string make_description(const CLI::App* app) const override {
        for (const auto& [described, text] : texts_) {
            if (described == app) return std::string(text) + "\n\n";
        }
        return app->get_description() + "\n\n";
    }

    std::string make_option_opts(const CLI::Option* option) const override {
        if (option->get_type_size() == 0 || option->get_type_name().empty()) return "";
        const std::string standard = option->get_default_str();
        return ' ' + option->get_type_name() + (standard.empty() ? "" : " (" + standard + ')');
    }

  private:
    std::vector<std::pair<const CLI::App*, const char*>> texts_;
};

/// One command of the program: its options as they are read, and what is asked for once they are.
struct Entry {
    CLI::App* app;
    std::function<Command()> command;
};

/// Reads the options of all commands into places of its own.
class Parser {
  public:
    Parser() : app_(help::program, "torvex") {
        app_.formatter(formatter_);
        app_.footer(help::programExamples);
        app_.require_subcommand(0, 1);
        app_.set_version_flag("--version", versionText());
        addInit();
        addServe();
        addSql();
        addCall();
        addSnapshot();
        addIndex();
        addImport();
        addExport();
        addMigrate();
        addReference();
    }

    Command parse(int count, const char* const* arguments) {
        try {
            app_.parse(count, arguments);
        } catch (const CLI::Success& asked) {
            return ShowText{textOf(asked)};
        } catch (const CLI::ParseError& error) {
            throw UsageError(fmt::format("{}\nSee \"{} --help\".", reasonOf(error), nameOfAsked()));
        }
        for (const Entry& entry : entries_) {
            if (entry.app->parsed()) return entry.command();
        }
        throw UsageError("which command? See \"torvex --help\".");
    }

  private:
    CLI::App& add(const char* name, const char* line, const char* description, const char* examples,
                  std::function<Command()> command) {
        CLI::App* app = app_.add_subcommand(name, line);
        formatter_->describe(app, description);
        app->footer(examples);
        entries_.push_back({app, std::move(command)});
        return *app;
    }

    static void addInstall(CLI::App& app, std::optional<std::string>& install) {
        app.add_option("--install", install, "the installation's folder")->type_name("DIR");
    }

    void addInit() {
        auto& app = add("init", "makes an installation", help::init, help::initExamples,
                        [this] { return initCommand(); });
        app.add_option("DIR", init_.folder, "the folder to make it in")->required()->type_name("");
        auto* demo = app.add_flag("--demo", demo_, "begin with the demo: two sites in two languages");
        auto* empty = app.add_flag("--empty", empty_, "begin without a site");
        demo->excludes(empty);
        const auto addStarter = [&](const char* name, std::string& target, const char* description,
                                    const char* type) {
            app.add_option(name, target, description)
                ->type_name(type)
                ->capture_default_str()
                ->excludes(demo, empty);
        };
        addStarter("--site", init_.starter.site, "two-character code of the starter's site", "CODE");
        addStarter("--lang", init_.starter.lang, "two-character code of its language", "CODE");
        addStarter("--title", init_.starter.title, "its title", "TEXT");
        app.add_option("--database", init_.database,
                       "sqlite:FOLDER, below DIR or absolute, or postgresql://USER@HOST/DATABASE")
            ->type_name("TEXT")
            ->capture_default_str();
        app.add_option("--admin-password", init_.adminPassword, "password of the system administrator \"sa\"")
            ->type_name("PW");
        app.add_option("--passwords", passwords_,
                       "how they are kept: strong (hashes) or given (the form that other programs read); "
                       "without it strong, but given with --empty")
            ->type_name("STORE")
            ->check(CLI::IsMember({"strong", "given"}));
    }

    Command initCommand() {
        if (demo_) init_.content = FirstContent::Demo;
        if (empty_) init_.content = FirstContent::Empty;
        if (!passwords_.empty())
            init_.passwords = passwords_ == "strong" ? PasswordStore::Strong : PasswordStore::Given;
        return init_;
    }

    void addServe() {
        auto& app = add("serve", "serves an installation", help::serve, help::serveExamples,
                        [this] { return serve_; });
        addInstall(app, serve_.install);
        app.add_option("--listen", serve_.listen, "in place of the address in the settings")
            ->type_name("ADDR:PORT");
    }

    void addSql() {
        auto& app = add("sql", "runs SQL statements on its database", help::sql, help::sqlExamples,
                        [this] { return sql_; });
        addInstall(app, sql_.install);
        app.add_flag("--json", sql_.json, "print each row as a line of JSON");
        app.add_option("STATEMENT", sql_.statements, "the statements")->type_name("");
    }

    void addCall() {
        auto& app = add("call", "calls an operation of a public class", help::call, help::callExamples,
                        [this] { return call_; });
        addInstall(app, call_.install);
        auto* batch =
            app.add_flag("--batch", call_.batch, "read requests as lines of JSON from standard input");
        auto* target = app.add_option("OPERATION", call_.one.target, "CLASS.OPERATION")->type_name("");
        app.add_option("ARGUMENTS", call_.one.arguments, "its arguments, each as name=value")->type_name("");
        app.add_option("--login", call_.one.login, "username of the author who calls")
            ->type_name("NAME")
            ->excludes(batch);
        app.add_flag("--json", call_.one.json, "print the whole answer as a line of JSON")->excludes(batch);
        target->excludes(batch);
        app.callback([this] {
            if (!call_.batch && call_.one.target.empty()) throw CLI::RequiredError("OPERATION or --batch");
        });
    }

    void addSnapshot() {
        auto& app = add("snapshot", "renews what its search reads", help::snapshot, help::snapshotExamples,
                        [this] { return snapshot_; });
        addInstall(app, snapshot_.install);
        auto* all = app.add_flag("--all", snapshot_.all, "every published page");
        auto* page = app.add_option("PAGE", snapshot_.page, "one page, by its number or its node");
        page->type_name("")->excludes(all);
        app.callback([this] {
            if (!snapshot_.all && text::trim(snapshot_.page).empty()) {
                throw CLI::RequiredError("PAGE (a page's number or node) or --all");
            }
        });
    }

    void addIndex() {
        auto& app = add("index", "brings its search up to date", help::index, help::indexExamples,
                        [this] { return index_; });
        addInstall(app, index_.install);
        auto* all = app.add_flag("--all", index_.all, "read every file anew");
        auto* check = app.add_flag("--check", index_.check, "only count what differs");
        auto* serve = app.add_option("--serve", index_.serve, "offer the catalogue to other servers");
        serve->type_name("ADDR:PORT");
        check->excludes(all);
        serve->excludes(all, check);
    }

    /// What is moved; there is one kind so far.
    static void addKind(CLI::App& app, std::string& kind) {
        app.add_option("WHAT", kind, "what it holds: users")
            ->required()
            ->type_name("")
            ->check(CLI::IsMember({"users"}));
    }

    void addImport() {
        auto& app = add("import", "takes visitors' accounts from a table", help::importing,
                        help::importingExamples, [this] { return import_; });
        addInstall(app, import_.install);
        addKind(app, kind_);
        app.add_option("FILE", import_.file, "the table, as CSV; - for standard input")
            ->required()
            ->type_name("");
        app.add_flag("--dry-run", import_.dryRun, "say line by line what would happen, and change nothing");
        app.add_option("--charset", import_.charset, "its encoding, where it isn't Unicode")
            ->type_name("NAME");
    }

    void addExport() {
        auto& app = add("export", "prints visitors' accounts as a table", help::exporting,
                        help::exportingExamples, [this] { return export_; });
        addInstall(app, export_.install);
        addKind(app, kind_);
        app.add_flag("--passwords", export_.passwords, "with their passwords, which anybody can then read");
    }

    void addMigrate() {
        auto& app = add("migrate", "brings its database to this program's schema", help::migrate,
                        help::migrateExamples, [this] { return migrate_; });
        addInstall(app, migrate_.install);
    }

    void addReference() {
        auto& app = add("reference", "prints what can be called", help::reference, help::referenceExamples,
                        [this] { return reference_; });
        app.add_flag("--json", reference_.json, "for programs, as JSON");
    }

    /// The help of the command that was asked about, or the version.
    std::string textOf(const CLI::Success& asked) {
        if (dynamic_cast<const CLI::CallForVersion*>(&asked) != nullptr)
            return std::string(asked.what()) + '\n';
        for (const Entry& entry : entries_) {
            if (entry.app->parsed()) return entry.app->help("torvex");
        }
        return app_.help();
    }

    std::string reasonOf(const CLI::ParseError& error) const {
        const auto unread = app_.remaining();
        if (nameOfAsked() == "torvex" && !unread.empty()) {
            return fmt::format("there is no command or option \"{}\"", unread.front());
        }
        return error.what();
    }

    std::string nameOfAsked() const {
        for (const Entry& entry : entries_) {
            if (entry.app->parsed()) return "torvex " + entry.app->get_name();
        }
        return "torvex";
    }

    std::shared_ptr<HelpFormatter> formatter_ = std::make_shared<HelpFormatter>();
    CLI::App app_;
    std::vector<Entry> entries_;
    InitOptions init_;
    bool demo_ = false;
    bool empty_ = false;
    std::string passwords_;
    ServeOptions serve_;
    SqlOptions sql_;
    MigrateOptions migrate_;
    SnapshotOptions snapshot_;
    IndexOptions index_;
    std::string kind_;
    ImportUsersOptions import_;
    ExportUsersOptions export_;
    CallFrameOptions call_;
    ReferenceOptions reference_;
};

}  // namespace

Command parseCommandLine(int count, const char* const* arguments) {
    return Parser().parse(count, arguments);
}

}  // namespace torvex::cli
