#include "platform/db/ConnectionSource.h"

#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"

namespace torvex::db {

Connection& ConnectionSource::use(HostContext& host) {
    if (auto* const* open = std::get_if<Connection*>(&given_)) return **open;
    if (opened_) return *opened_;
    const auto* text = std::get_if<std::string>(&given_);
    if (text == nullptr) throw DatabaseError("no connection: connect was not called");
    opened_ = host.database.open(*text);
    return *opened_;
}

Lease openOwn(HostContext& host, Purpose purpose) {
    const auto& values = host.application;
    return host.database.open(values.text("torvex_odbc"), values.text("torvex_odbc_user"),
                              values.text("torvex_odbc_password"), purpose);
}

}  // namespace torvex::db
