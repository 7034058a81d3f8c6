#include "pages/authors/EntryFiles.h"

#include <algorithm>
#include <boost/json.hpp>
#include <fmt/format.h>

#include "installation/BuiltInterface.h"
#include "platform/Errors.h"

namespace torvex {

namespace {

namespace json = boost::json;

constexpr std::string_view list = ".vite/manifest.json";
constexpr std::string_view entry = "src/shell/main.ts";

std::string textOf(const json::value& value) {
    const auto& text = value.as_string();
    return {text.data(), text.size()};
}

std::string addressOf(const json::value& file) {
    return "/torvex/ui/" + textOf(file);
}

/// False when it is there already.
bool addOnce(std::vector<std::string>& addresses, std::string address) {
    if (std::find(addresses.begin(), addresses.end(), address) != addresses.end()) return false;
    addresses.push_back(std::move(address));
    return true;
}

/// A chunk's styles and those of what it imports, each once.
void collect(const json::object& chunks, const std::string& name, EntryFiles& files) {
    const json::object& chunk = chunks.at(name).as_object();
    if (const auto* styles = chunk.if_contains("css")) {
        for (const auto& style : styles->as_array()) addOnce(files.styles, addressOf(style));
    }
    const auto* imports = chunk.if_contains("imports");
    if (!imports) return;
    for (const auto& import : imports->as_array()) {
        const std::string imported = textOf(import);
        const json::value& file = chunks.at(imported).as_object().at("file");
        if (addOnce(files.imports, addressOf(file))) collect(chunks, imported, files);
    }
}

}  // namespace

EntryFiles entryFilesOf(const BuiltInterface& interface) try {
    const auto bytes = interface.file(list);
    if (!bytes) throw Error("it isn't there");
    const json::value parsed = json::parse(*bytes);
    const json::object& chunks = parsed.as_object();
    EntryFiles files;
    files.script = addressOf(chunks.at(json::string_view(entry.data(), entry.size())).as_object().at("file"));
    collect(chunks, std::string(entry), files);
    return files;
} catch (const std::exception& error) {
    throw Error(fmt::format("The list {} of the built interface can't be used: {}", list, error.what()));
}

}  // namespace torvex
