#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include "Store.h"
#include "authoring/cManager.h"

// The lists of a site that has kept its pictures for twenty years: 50,000 in 1,000 folders, fifty in each. Every one
// of them must stay under 200 ms.

namespace torvex {
namespace {

constexpr int topFolders = 40;
constexpr int foldersBelow = 24;  // which makes 1,000 with the top ones
constexpr int imagesOfAFolder = 50;

class MediaRoom : public bench::Store {
  public:
    MediaRoom() {
        host.application.set("torvex_sitemap_loadLevel", 2);
        host.session.set("torvex_loginId", 1);
        host.session.set("torvex_username", "a");
        connection().execute("insert into TORVEX_LOGINS (loginId, username, sessionId) values (1, 'a', 's')");
        connection().execute("insert into TORVEX_SITES (site, name) values ('aa', 'Site')");
        db::Transaction transaction(connection());
        for (int i = 1; i <= topFolders; ++i) {
            const std::string top = fmt::format("{:03}", i);
            addFolder(top);
            for (int j = 1; j <= foldersBelow; ++j) addFolder(top + fmt::format("{:03}", j));
        }
        transaction.commit();
        manager.connect(connection());
    }

    cManager manager{host.context()};

  private:
    void addFolder(const std::string& id) {
        connection().execute(
            "insert into TORVEX_IMAGES_FOLDERS (fld_site, fld_id, fld_name, fld_level, fld_parent) "
            "values ('aa', ?, ?, ?, ?)",
            {id, "Folder no. " + id, static_cast<double>(id.size() / 3), id.substr(0, id.size() - 3)});
        for (int i = 0; i < imagesOfAFolder; ++i) {
            connection().execute(
                "insert into TORVEX_IMAGES (img_site, img_fldId, img_title, img_filename, img_size, "
                "img_width, "
                "img_height) values ('aa', ?, ?, ?, 48000, 1200, 720)",
                {id, fmt::format("Roses in June, {}", i), fmt::format("{}/roses-{}.jpg", id, i)});
        }
    }
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
