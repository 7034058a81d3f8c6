#include <benchmark/benchmark.h>
#include <filesystem>
#include <fmt/format.h>
#include <memory>
#include <stdexcept>
#include <stdlib.h>

#include "authoring/cManager.h"
#include "installation/Schema.h"
#include "installation/SchemaFiles.h"
#include "platform/HostContext.h"
#include "platform/db/Connection.h"
#include "platform/db/Database.h"
#include "support/TestHost.h"

// The lists of a site that has kept its pictures for twenty years: 50,000 in 1,000 folders, fifty in each. Every one
// of them must stay under 200 ms.

namespace torvex {
namespace {

constexpr int topFolders = 40;
constexpr int foldersBelow = 24;  // which makes 1,000 with the top ones
constexpr int imagesOfAFolder = 50;

class MediaRoom {
  public:
    MediaRoom() {
        if (mkdtemp(folder_.data()) == nullptr) throw std::runtime_error("can't make a temporary folder");
        const std::string text = "sqlite:" + folder_ + "/db";
        installedSchema().create(*database_, host.clock, text);
        connection_ = database_->open(text);
        host.application.set("torvex_sitemap_loadLevel", 2);
        host.session.set("torvex_loginId", 1);
        host.session.set("torvex_username", "a");
        connection_->execute("insert into TORVEX_LOGINS (loginId, username, sessionId) values (1, 'a', 's')");
        connection_->execute("insert into TORVEX_SITES (site, name) values ('aa', 'Site')");
        db::Transaction transaction(*connection_);
        for (int i = 1; i <= topFolders; ++i) {
            const std::string top = fmt::format("{:03}", i);
            addFolder(top);
            for (int j = 1; j <= foldersBelow; ++j) addFolder(top + fmt::format("{:03}", j));
        }
        transaction.commit();
        manager.connect(*connection_);
    }
    MediaRoom(const MediaRoom&) = delete;
    MediaRoom& operator=(const MediaRoom&) = delete;
    ~MediaRoom() {
        connection_.reset();
        database_.reset();
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    test::TestHost host;

  private:
    void addFolder(const std::string& id) {
        connection_->execute(
            "insert into TORVEX_IMAGES_FOLDERS (fld_site, fld_id, fld_name, fld_level, fld_parent) "
            "values ('aa', ?, ?, ?, ?)",
            {id, "Folder no. " + id, static_cast<double>(id.size() / 3), id.substr(0, id.size() - 3)});
        for (int i = 0; i < imagesOfAFolder; ++i) {
            connection_->execute(
                "insert into TORVEX_IMAGES (img_site, img_fldId, img_title, img_filename, img_size, "
                "img_width, "
                "img_height) values ('aa', ?, ?, ?, 48000, 1200, 720)",
                {id, fmt::format("Roses in June, {}", i), fmt::format("{}/roses-{}.jpg", id, i)});
        }
    }

    std::string folder_ = std::filesystem::temp_directory_path() / "torvex-bench-XXXXXX";
    std::unique_ptr<db::Database> database_ = db::makeDatabase();
    db::Lease connection_;
    HostContext context_ = host.context();

  public:
    cManager manager{context_};
};

MediaRoom& room() {
    static MediaRoom shared;
    return shared;
}

void folderTree(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(room().manager.getUploadFolders("aa", "", "020010", "images"));
}
BENCHMARK(folderTree)->Unit(benchmark::kMillisecond);

void imagesOfOneFolder(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(room().manager.getImageList("aa", "020010"));
}
BENCHMARK(imagesOfOneFolder)->Unit(benchmark::kMillisecond);

void allImages(benchmark::State& state) {
    for (auto _ : state) {
        const Value images = room().manager.getImageList("aa");
        if (images.grid().rows() != 50'000) state.SkipWithError("there should be 50,000 images");
    }
}
BENCHMARK(allImages)->Unit(benchmark::kMillisecond);

void imagesOfOneSize(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(room().manager.getImageList("aa", "", 468, 60));
}
BENCHMARK(imagesOfOneSize)->Unit(benchmark::kMillisecond);

/// The picker of the editor, with all of them in one page.
void imagePicker(benchmark::State& state) {
    for (auto _ : state) {
        room().host.response = {};
        room().manager.treeView("aa", "en", "D", "images");
        if (room().host.response.body().size() < 5'000'000)
            state.SkipWithError("there should be 50,000 images");
    }
}
BENCHMARK(imagePicker)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace torvex
