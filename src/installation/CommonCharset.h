#pragma once

#include <string>

#include "platform/Value.h"

namespace torvex {
class ApplicationValues;
namespace db {
class Connection;
}

/// The character set that all languages share; both are empty when they don't.
struct CommonCharset {
    std::string label;
    Value codepage;
};
CommonCharset commonCharset(db::Connection& connection);

/// Puts it, or nothing, among the values that all requests share.
void storeCommonCharset(ApplicationValues& application, const CommonCharset& charset);

}  // namespace torvex
