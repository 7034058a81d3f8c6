#include "platform/text/ScriptText.h"

namespace torvex {

std::string scriptText(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size() + text.size() / 8);
    for (const char c : text) {
        if (c == '\\' || c == '\'' || c == '"') escaped += '\\';
        escaped += c;
    }
    return escaped;
}

}  // namespace torvex
