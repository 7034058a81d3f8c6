#include "host/sessions/EndedAuthors.h"

#include "accounts/Website.h"
#include "host/LineLog.h"
#include "platform/ApplicationValues.h"
#include "platform/Keys.h"
#include "platform/Services.h"
#include "platform/db/Database.h"

namespace torvex {

void leaveWebsites(const Services& services, LineLog& log, std::span<const std::string> sessionIds) {
    followUp(log, "leaving the websites of sessions that have ended", [&] {
        const auto& values = services.application;
        const db::Lease connection = services.database.open(
            values.text(applicationKey::databaseText), values.text(applicationKey::databaseUser),
            values.text(applicationKey::databasePassword), db::Purpose::Transaction);
        leaveWebsites(*connection, sessionIds);
    });
}

}  // namespace torvex
