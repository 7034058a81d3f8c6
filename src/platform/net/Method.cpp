#include "platform/net/Method.h"

#include <array>
#include <string_view>
#include <utility>

namespace torvex {

namespace {

constexpr std::array<std::pair<Method, std::string_view>, 7> names{{{Method::Get, "GET"},
                                                                    {Method::Head, "HEAD"},
                                                                    {Method::Post, "POST"},
                                                                    {Method::Patch, "PATCH"},
                                                                    {Method::Put, "PUT"},
                                                                    {Method::Delete, "DELETE"},
                                                                    {Method::Options, "OPTIONS"}}};

}  // namespace

std::string MethodSet::text() const {
    std::string all;
    for (const auto& [method, name] : names) {
        if (has(method)) all.append(all.empty() ? "" : ", ").append(name);
    }
    return all;
}

}  // namespace torvex
