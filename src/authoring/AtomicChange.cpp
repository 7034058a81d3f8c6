#include "authoring/AtomicChange.h"

#include "authoring/RunReport.h"
#include "authoring/StatusCodes.h"
#include "platform/db/ConnectionSource.h"

namespace torvex {

std::string_view changeAtomically(HostContext& host, std::string_view operation, std::string_view ident,
                                  const std::function<std::string_view(db::Connection&)>& change) {
    try {
        const auto own = db::openOwn(host);
        db::Transaction transaction(*own);
        const std::string_view code = change(*own);
        if (code.empty()) transaction.commit();
        return code;
    } catch (const std::exception& error) {
        warnOf(host, operation, ident, error);
        return status::failed;
    }
}

}  // namespace torvex
