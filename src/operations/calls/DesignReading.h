#pragma once

#include <functional>
#include <string_view>

#include "operations/register/Register.h"

namespace torvex {
struct Actor;
namespace db {
class Connection;
}
}  // namespace torvex

namespace torvex::operations {

class CallValues;

/// Whether the caller may read the designs that a call with these values reads. `property` reads a property of
/// the object that the call is made on.
bool mayReadDesigns(db::Connection& connection, const Actor& actor, const Right::Design& design,
                    const CallValues& values, const std::function<Value(std::string_view name)>& property);

}  // namespace torvex::operations
