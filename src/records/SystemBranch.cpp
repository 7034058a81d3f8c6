#include "records/SystemBranch.h"

namespace torvex::systemBranch {

namespace {

constexpr std::string_view digits = "99";
constexpr std::string_view level = ".99";

}  // namespace

std::string below(std::string_view parent) {
    return std::string(parent).append(level);
}

bool isRoot(std::string_view nodeId) {
    return nodeId.ends_with(level);
}

bool hasNumber(std::string_view nodeId) {
    return nodeId.find(level) != std::string_view::npos;
}

bool hasDigits(std::string_view nodeId) {
    return nodeId.find(digits) != std::string_view::npos;
}

int highestBelow(std::string_view nodeId) {
    return hasDigits(nodeId) ? number : number - 1;
}

}  // namespace torvex::systemBranch
