#include "operations/register/Binding.h"

#include "operations/register/Conversion.h"

namespace torvex::operations {

void setCodes(Operation& operation, std::vector<StatusCode> codes) {
    if (operation.result == typeName(ArgumentType::Text)) {
        for (auto& one : codes) one.code = one.code.toText();
    }
    operation.codes = std::move(codes);
}

}  // namespace torvex::operations
