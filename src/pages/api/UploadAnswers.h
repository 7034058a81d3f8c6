#pragma once

#include "pages/api/UploadDesk.h"

namespace torvex::api {

/// Answers a request for the uploads, or for one of them. On a worker, with the session held; what came of a
/// piece stands behind the receipt.
void answerUpload(HostContext& host, UploadDesk& desk);

}  // namespace torvex::api
