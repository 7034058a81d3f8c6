#pragma once

#include <optional>
#include <string>

#include "accounts/Proof.h"
#include "cli/Terminal.h"
#include "installation/FirstRows.h"

namespace torvex::cli {

/// What a new installation begins with.
enum class FirstContent { Starter, Demo, Empty };

struct InitOptions {
    std::string folder;
    FirstContent content = FirstContent::Starter;
    NewWebsite starter;  ///< for `FirstContent::Starter`
    std::string database = "sqlite:data";
    std::optional<std::string> adminPassword;  ///< none: one is made and shown
    /// None: strong, but for an installation without a site, which other programs may fill.
    std::optional<PasswordStore> passwords;
};

/// Makes an installation, or nothing: what was made so far is taken back when it fails. Throws `UsageError`
/// or `Error`, with nothing changed, when the folder or the database is taken.
ExitCode init(const InitOptions& options, const Environment& environment, const Terminal& terminal);

}  // namespace torvex::cli
