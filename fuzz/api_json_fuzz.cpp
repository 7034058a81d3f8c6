// Whatever a program may send to the interface for programs: what is read as JSON, as a batch, and what is written
// back of it.

#include <boost/json/serialize.hpp>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "operations/register/PublicObject.h"
#include "pages/api/BatchRequest.h"
#include "pages/api/Json.h"
#include "platform/text/Text.h"

namespace {

namespace api = torvex::api;
namespace json = boost::json;

void require(bool holds) {
    if (!holds) std::abort();
}

std::size_t depthOf(const json::value& value) {
    std::size_t deepest = 0;
    if (const auto* list = value.if_array())
        for (const auto& one : *list) deepest = std::max(deepest, depthOf(one));
    if (const auto* object = value.if_object())
        for (const auto& one : *object) deepest = std::max(deepest, depthOf(one.value()));
    return value.is_structured() ? deepest + 1 : 0;
}

void readArguments(const json::object& members) {
    for (const auto& [name, value] : members) {
        try {
            const torvex::Value argument = api::argumentOf(value, std::string(name));
            require(!argument.isText() || argument.text().find('\0') == std::string::npos);
            require(torvex::text::isValidUtf8(json::serialize(api::jsonOf(argument))));
        } catch (const torvex::operations::ArgumentError&) {
        }
    }
}

void readBatch(const json::object& batch) {
    try {
        for (const auto& call : api::callsOf(batch))
            if (call.expects) api::isMet(*call.expects, "a text");
    } catch (const api::BatchError& error) {
        require(!std::string_view(error.what()).empty());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto outcome = api::readJson({reinterpret_cast<const char*>(data), size});
    const auto* value = std::get_if<json::value>(&outcome);
    if (!value) return 0;
    require(depthOf(*value) <= api::deepest);
    const std::string written = json::serialize(*value);
    require(torvex::text::isValidUtf8(written));
    require(std::holds_alternative<json::value>(api::readJson(written)));
    if (const auto* members = value->if_object()) {
        readArguments(*members);
        readBatch(*members);
    }
    return 0;
}
