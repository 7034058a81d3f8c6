#pragma once

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <stdlib.h>
#include <string>

#include "installation/Schema.h"
#include "installation/SchemaFiles.h"
#include "platform/db/Connection.h"
#include "platform/db/Database.h"
#include "support/TestHost.h"

namespace torvex::bench {

/// A new folder, which goes with the object.
class ScratchFolder {
  public:
    ScratchFolder() {
        if (mkdtemp(path_.data()) == nullptr) throw std::runtime_error("can't make a temporary folder");
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::string& path() const { return path_; }

  private:
    std::string path_ = std::filesystem::temp_directory_path() / "torvex-bench-XXXXXX";
};

/// An embedded store of its own without any rows, and a host beside it.
class Store {
  public:
    Store() {
        installedSchema().create(*database_, host.clock, text_);
        connection_ = openAnother();
    }
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;
    ~Store() { host.database.target = nullptr; }

    db::Connection& connection() { return *connection_; }
    db::Lease openAnother() { return database_->open(text_); }
    const std::string& folder() const { return folder_.path(); }

    /// Who opens connections by itself opens them to this store.
    void lendToHost() {
        host.database.target = database_.get();
        host.application.set("torvex_odbc", text_);
    }

    test::TestHost host;

  private:
    ScratchFolder folder_;
    std::string text_ = "sqlite:" + folder_.path() + "/db";
    std::unique_ptr<db::Database> database_ = db::makeDatabase();
    db::Lease connection_;
};

}  // namespace torvex::bench
