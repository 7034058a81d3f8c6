#include "pages/NoStore.h"

#include <gtest/gtest.h>

#include "platform/Response.h"
#include "platform/Session.h"

namespace torvex {
namespace {

TEST(NoStore, StandsBesideWhatHasBeenSaid) {
    Response response;
    forbidStoring(response);
    EXPECT_EQ(response.cacheControl, "no-store");
    forbidStoring(response);
    EXPECT_EQ(response.cacheControl, "no-store");
    response.cacheControl = "no-cache";
    forbidStoring(response);
    EXPECT_EQ(response.cacheControl, "no-cache, no-store");
}

TEST(NoStore, ALoginIsAVisitorsOrAnAuthors) {
    Session session("id");
    EXPECT_FALSE(holdsLogin(session));
    session.set("torvex_username", "");
    EXPECT_FALSE(holdsLogin(session));
    session.set("torvex_username", "sa");
    EXPECT_TRUE(holdsLogin(session));
    session.set("torvex_username", "");
    session.set("tvx_username", "ann");
    EXPECT_TRUE(holdsLogin(session));
}

}  // namespace
}  // namespace torvex
