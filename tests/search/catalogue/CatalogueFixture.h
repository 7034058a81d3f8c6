#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "platform/Keys.h"
#include "platform/text/Text.h"
#include "search/catalogue/Catalogue.h"
#include "search/catalogue/Format.h"
#include "search/catalogue/Writer.h"
#include "support/TestDatabase.h"
#include "support/TestHost.h"

namespace torvex::test {

/// Of an English page, for all that lies below a folder.
inline catalogue::Query queryBelow(const std::string& path, const std::string& text,
                                   const std::string& sortBy) {
    catalogue::Query asked;
    asked.text = text;
    asked.language = "en";
    asked.sortBy = sortBy;
    asked.scopes = {{path, catalogue::Depth::Deep}};
    return asked;
}

/// A catalogue on the disk, filled by hand. Paths in it begin with "\root\".
class CatalogueTest : public testing::Test {
  protected:
    CatalogueTest() { host.application.set(applicationKey::installPath, folder.path()); }

    /// A page of the site "ab" in the node's language.
    void page(const std::string& nodeId, const std::string& text, catalogue::Columns columns = {}) {
        const std::string lang = nodeId.substr(3, 2);
        entry("search/html/" + lang + "/" + nodeId.substr(0, 2) + "/" + nodeId + ".html", text,
              std::move(columns), lang);
    }
    /// A document of the site "ab".
    void document(const std::string& name, const std::string& text, catalogue::Columns columns = {}) {
        entry("wwwroot/documents/ab/" + name, text, std::move(columns));
    }
    void entry(const std::string& path, const std::string& text, catalogue::Columns columns = {},
               const std::string& language = "") {
        if (catalogue::isSnapshot(path)) {
            const std::filesystem::path file = folder.path() + "/" + path;
            std::filesystem::create_directories(file.parent_path());
            std::ofstream(file, std::ios::binary) << text::htmlEncode(text);
        }
        waiting_.push_back({path, {text.size(), 0}, {text, language, std::move(columns)}});
    }
    /// Puts in what was said so far; looking for something does so by itself.
    void commit() {
        if (waiting_.empty()) return;
        catalogue::Writer writer(database());
        for (const catalogue::Entry& entry : waiting_) writer.put(entry);
        waiting_.clear();
        writer.commit();
    }
    void remove(const std::string& path) {
        commit();
        catalogue::Writer writer(database());
        writer.remove(path);
        writer.commit();
    }
    std::string database() const { return catalogue::databaseFolder(folder.path()); }

    static catalogue::Query query(const std::string& text, const std::string& sortBy = "rank[d]") {
        return queryBelow("\\root\\", text, sortBy);
    }
    std::unique_ptr<catalogue::Catalogue> open() {
        commit();
        return catalogue::open(host.context(), "torvex", "\\root\\");
    }
    std::shared_ptr<const catalogue::Results> find(const catalogue::Query& asked) {
        return open()->find(asked);
    }
    /// The names of the files found, in their order; those of pages without their ending.
    std::vector<std::string> names(const catalogue::Query& asked) {
        const auto results = find(asked);
        std::vector<std::string> found;
        for (std::size_t n = 0; n < results->size(); ++n) {
            std::string name = results->row(n).filename;
            if (name.ends_with(".html")) name.resize(name.size() - 5);
            found.push_back(std::move(name));
        }
        return found;
    }
    std::vector<std::string> names(const std::string& text) { return names(query(text)); }

    TemporaryFolder folder;
    TestHost host;

  private:
    std::vector<catalogue::Entry> waiting_;
};

}  // namespace torvex::test
