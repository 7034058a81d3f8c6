#include <benchmark/benchmark.h>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <stdlib.h>

#include "authoring/cManager.h"
#include "installation/Schema.h"
#include "installation/SchemaFiles.h"
#include "platform/HostContext.h"
#include "platform/files/DiskFileSystem.h"
#include "support/TestHost.h"

// A new site or language goes over the folders of all sites in all languages: with fifty of each it must
// stay under two seconds.

namespace torvex {
namespace {

namespace fs = std::filesystem;

/// An installation on the disk, with its embedded store.
class Installation {
  public:
    explicit Installation(int square) {
        if (mkdtemp(folder_.data()) == nullptr) throw std::runtime_error("can't make a temporary folder");
        for (const auto* path : {"baseTemplates", "contentTemplates", "wwwroot/documents", "wwwroot/images",
                                 "wwwroot/stylesheets"}) {
            fs::create_directories(folder_ + "/" + path);
        }
        std::ofstream(folder_ + "/wwwroot/admin.css") << std::string(20000, 'x');
        std::ofstream(folder_ + "/wwwroot/config.xml") << std::string(5000, 'x');
        const std::string text = "sqlite:" + folder_ + "/data";
        installedSchema().create(*database_, host_.clock, text);
        connection_ = database_->open(text);
        host_.database.target = database_.get();
        host_.application.set("torvex_odbc", text);
        host_.application.set("torvex_install_path", folder_ + "/");
        host_.application.set("torvex_image_dir", folder_ + "/wwwroot/images/");
        host_.application.set("torvex_doc_dir", folder_ + "/wwwroot/documents/");
        files_ = std::make_unique<DiskFileSystem>(std::vector<std::string>{folder_});
        addRows(square);
        manager.emplace(context());
        manager->connect(*connection_);
        // The folders of the square.
        if (!manager->addSite("zz", "zz", "")) throw std::runtime_error("the site was not added");
        run("delete from TORVEX_SITES where site = 'zz'");
    }
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;
    ~Installation() {
        manager.reset();
        connection_.reset();
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

    void run(const std::string& statement) { connection_->executeScript(statement); }
    void removeFolders(const std::string& name) {
        std::vector<fs::path> found;
        for (const auto& entry : fs::recursive_directory_iterator(folder_)) {
            if (entry.path().filename() == name) found.push_back(entry.path());
        }
        for (const auto& path : found) fs::remove_all(path);
    }

    std::optional<cManager> manager;

  private:
    void addRows(int square) {
        db::Transaction transaction(*connection_);
        run("insert into TORVEX_CHARSETS (charset_id, charset_label) values (1, 'utf-8')");
        for (int i = 0; i < square; ++i) {
            run(fmt::format("insert into TORVEX_SITES (site, name) values ('{0:02}', 'Site {0}')", i));
            run(fmt::format("insert into TORVEX_LANGUAGES (lang, name) values ('{0:02}', 'Lang {0}')", i));
        }
        transaction.commit();
    }
    HostContext& context() {
        context_.emplace(
            HostContext{host_.services().with(*files_), host_.request, host_.response, host_.session});
        return *context_;
    }

    std::string folder_ = fs::temp_directory_path() / "torvex-bench-XXXXXX";
    std::unique_ptr<db::Database> database_ = db::makeDatabase();
    db::Lease connection_;
    test::TestHost host_;
    std::unique_ptr<DiskFileSystem> files_;
    std::optional<HostContext> context_;
};

void addSite(benchmark::State& state) {
    Installation installation(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        if (!installation.manager->addSite("zz", "zz", "")) throw std::runtime_error("it was not added");
        state.PauseTiming();
        installation.run("delete from TORVEX_SITES where site = 'zz'");
        installation.removeFolders("zz");
        state.ResumeTiming();
    }
}
BENCHMARK(addSite)->Arg(5)->Arg(50)->Unit(benchmark::kMillisecond);

void addLanguage(benchmark::State& state) {
    Installation installation(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        if (!installation.manager->addLanguage("zz", "zz", 1)) throw std::runtime_error("it was not added");
        state.PauseTiming();
        installation.run("delete from TORVEX_LANGUAGES where lang = 'zz'");
        installation.removeFolders("zz");
        state.ResumeTiming();
    }
}
BENCHMARK(addLanguage)->Arg(5)->Arg(50)->Unit(benchmark::kMillisecond);

/// Every pair with its title.
void getWebsites(benchmark::State& state) {
    Installation installation(static_cast<int>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(installation.manager->getWebsites());
}
BENCHMARK(getWebsites)->Arg(5)->Arg(50)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace torvex
