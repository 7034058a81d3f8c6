#include <gtest/gtest.h>

#include "accounts/AdminEntries.h"
#include "operations/register/Register.h"

namespace torvex::operations {
namespace {

Right rightOf(const char* operation) {
    const Register classes = makeRegister();
    const Operation* found = classes.find("cManager").findOperation(operation);
    return found == nullptr ? Right{} : found->right;
}

TEST(ManagerLoginRows, TheDoorIsOpenToVisitors) {
    EXPECT_EQ(rightOf("login").kind, Right::Kind::Visitor);
    EXPECT_EQ(rightOf("logout").kind, Right::Kind::Visitor);
}

TEST(ManagerLoginRows, WhoIsWhoIsForAuthors) {
    for (const auto* operation : {"getLoginState", "getLoginId", "getLoginName"}) {
        EXPECT_EQ(rightOf(operation).kind, Right::Kind::AnyLogin) << operation;
    }
}

TEST(ManagerLoginRows, EndingALoginNeedsTheEntryOfTheMenu) {
    const Right right = rightOf("endLogin");
    EXPECT_EQ(right.kind, Right::Kind::AdvancedRight);
    EXPECT_EQ(right.detail, "edit");
    EXPECT_EQ(right.advId, adminEntry::loginsOnline);
}

TEST(ManagerLoginRows, NobodyWritesTheTrailFromOutside) {
    EXPECT_EQ(rightOf("addAuditTrail").kind, Right::Kind::Nobody);
}

TEST(ManagerLoginRows, TheStoredPasswordIsOutOfReach) {
    const Register classes = makeRegister();
    const ClassEntry& manager = classes.find("cManager");
    EXPECT_EQ(manager.findProperty("password")->right.kind, Right::Kind::Nobody);
    for (const auto* name : {"loginId", "username", "Fullname"}) {
        EXPECT_EQ(manager.findProperty(name)->right.kind, Right::Kind::AnyLogin) << name;
        EXPECT_FALSE(manager.findProperty(name)->set) << name;
    }
}

}  // namespace
}  // namespace torvex::operations
