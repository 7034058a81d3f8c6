#pragma once

#include <memory>
#include <sstream>
#include <string>

#include "Store.h"
#include "cli/InitCommand.h"
#include "cli/OpenInstallation.h"
#include "installation/Setup.h"

namespace torvex::bench {

/// A new installation with the demo, opened.
class DemoInstallation {
  public:
    DemoInstallation() {
        const Environment environment = [](const std::string&) { return std::nullopt; };
        std::istringstream in;
        std::ostringstream out;
        cli::InitOptions options;
        options.folder = folder_.path() + "/site";
        options.content = cli::FirstContent::Demo;
        cli::init(options, environment, {in, out, out});
        opened_ = std::make_unique<cli::OpenInstallation>(Installation::open(options.folder, environment));
        opened_->runWithoutVisitor([](HostContext& host) { Setup(host).initApplication(); });
    }

    cli::OpenInstallation& opened() { return *opened_; }

  private:
    ScratchFolder folder_;
    std::unique_ptr<cli::OpenInstallation> opened_;
};

}  // namespace torvex::bench
