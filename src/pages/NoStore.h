#pragma once

namespace torvex {

class Response;
class Session;

/// No cache may keep the answer, the browser's neither, whatever has been said of caching before.
void forbidStoring(Response& response);

/// Whether the session is that of somebody who has logged in, as a visitor or an author.
bool holdsLogin(const Session& session);

}  // namespace torvex
