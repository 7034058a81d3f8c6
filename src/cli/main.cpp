#include <cstdlib>
#include <iostream>
#include <string_view>
#include <unistd.h>

#include "cli/CommandLine.h"
#include "platform/xml/XmlWorker.h"
#include "search/extraction/TextWorkers.h"

int main(int count, char** arguments) {
    if (count == 2 && std::string_view(arguments[1]) == torvex::xmlWorkerArgument)
        return torvex::runXmlWorker();
    if (count == 2 && std::string_view(arguments[1]) == torvex::catalogue::textWorkerArgument)
        return torvex::catalogue::runTextWorker();
    const auto environment = [](const std::string& name) -> std::optional<std::string> {
        const char* value = std::getenv(name.c_str());
        if (value == nullptr) return std::nullopt;
        return value;
    };
    const torvex::cli::Terminal terminal{std::cin, std::cout, std::cerr, ::isatty(STDERR_FILENO) == 1};
    return static_cast<int>(torvex::cli::runProgram(count, arguments, environment, terminal));
}
