#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/text/Text.h"
#include "search/catalogue/Catalogue.h"
#include "search/catalogue/QueryText.h"
#include "search/catalogue/Sources.h"
#include "search/catalogue/Words.h"

namespace {

using torvex::catalogue::QueryNode;

/// What the translation relies on.
void check(const QueryNode& node) {
    using Kind = QueryNode::Kind;
    const std::size_t words = torvex::catalogue::wordsOf(node.text).size();
    switch (node.kind) {
        case Kind::Nothing:
            return;
        case Kind::Word:
        case Kind::Forms:
            if (words != 1 || node.property.empty()) std::abort();
            return;
        case Kind::Prefix:
            if (words == 0 || node.property.empty()) std::abort();
            return;
        case Kind::Phrase:
            if (words < 2 || node.property.empty()) std::abort();
            return;
        case Kind::FileName:
            if (node.text.empty()) std::abort();
            torvex::catalogue::matchesPattern("ab.en.01.html", node.text);
            return;
        case Kind::Not:
            if (node.parts.size() != 1) std::abort();
            break;
        case Kind::And:
        case Kind::Or:
            if (node.parts.size() < 2) std::abort();
            break;
    }
    for (const QueryNode& part : node.parts) check(part);
}

}  // namespace

/// The input is a query.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        check(torvex::catalogue::parseQuery({reinterpret_cast<const char*>(data), size}));
    } catch (const torvex::catalogue::QueryError& error) {
        if (!torvex::text::isValidUtf8(error.what())) std::abort();
    }
    return 0;
}
