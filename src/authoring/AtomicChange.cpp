#include "authoring/AtomicChange.h"

#include "authoring/StatusCodes.h"
#include "platform/db/Link.h"

namespace torvex {

std::string_view changeAtomically(HostContext& host,
                                  const std::function<std::string_view(db::Connection&)>& change) {
    try {
        const auto own = db::openOwn(host);
        db::Transaction transaction(*own);
        const std::string_view code = change(*own);
        if (code.empty()) transaction.commit();
        return code;
    } catch (const std::exception&) {
        return status::failed;
    }
}

}  // namespace torvex
