// The page record from outside, by the names of its properties.

#include "operations/register/Classes.h"
#include "operations/register/PublicObject.h"
#include "support/ManagerTest.h"

namespace torvex::test {
namespace {

using operations::PublicObject;

class PagePropertiesTest : public ManagerTest {
  protected:
    void SetUp() override {
        ManagerTest::SetUp();
        object_ = std::make_unique<PublicObject>(entry_, host.context());
        object_->connect(db::ConnectionSource(connection()));
    }
    void TearDown() override {
        object_.reset();
        ManagerTest::TearDown();
    }

    PublicObject& object() { return *object_; }
    /// What a property is refused with; "" when it takes the value.
    std::string refusalOf(const std::string& name, const Value& value) {
        try {
            object().set(name, value);
        } catch (const Error& error) {
            return error.what();
        }
        return {};
    }

  private:
    operations::ClassEntry entry_ = operations::managerOperations();
    std::unique_ptr<PublicObject> object_;
};
INSTANTIATE_TEST_SUITE_P(Engines, PagePropertiesTest, bothEngines(), engineName);

TEST_P(PagePropertiesTest, TextsCanBeSet) {
    for (const auto* name : {"pgNodeId", "pgType", "pgTitle", "pgNavigation", "pgOnlineFrom", "pgOnlineTo",
                             "pgEditStatus", "pgEditor", "pgLockedBy", "pgDeletedBy", "pgApprovedBy",
                             "pgAppParamPublic", "pgAppParamAdmin", "pgGroups"}) {
        object().set(name, std::string("of ") + name);
        EXPECT_EQ(object().get(name), Value(std::string("of ") + name));
    }
}

TEST_P(PagePropertiesTest, NumbersCanBeSet) {
    double number = 5;
    for (const auto* name : {"pgPageId", "pgOrderId", "pgPrevious", "pgNext", "pgUp", "pgLockStatus",
                             "pgDeleteStatus", "pgApproveStatus", "pgTemplateId", "pgStylesheetId",
                             "pgBaseTemplateId", "pgAppId", "pgAppSystemFolder", "pgLoginPage"}) {
        object().set(name, ++number);
        EXPECT_EQ(object().get(name), Value(number)) << name;
    }
}

TEST_P(PagePropertiesTest, MomentsCanBeSet) {
    const DateTime moment{2026, 5, 4, 3, 2, 1};
    for (const auto* name : {"pgEditingDate", "pgLockingDate", "pgDeletingDate", "pgApprovingDate"}) {
        EXPECT_EQ(object().get(name), Value(DateTime{1900, 1, 1, 0, 0, 0})) << name;
        object().set(name, moment);
        EXPECT_EQ(object().get(name), Value(moment)) << name;
    }
}

TEST_P(PagePropertiesTest, WhatOnlyReadingFillsCannotBeSet) {
    for (const auto* name :
         {"pgExists", "pgOnline", "pgAuthor", "pgPublisher", "pgAuthoringDate", "pgPublishingDate",
          "pgTemplateFile", "pgTemplateName", "pgStylesheetFile", "pgStylesheetName", "pgBaseTemplateFile",
          "pgBaseTemplateName", "pgAppName", "pgAppDesc", "pgAppURLpublic", "pgAppURLadmin", "pgTotalHits"}) {
        const Value before = object().get(name);
        EXPECT_NE(refusalOf(name, 1), "") << name;
        EXPECT_EQ(object().get(name), before) << name;
    }
}

TEST_P(PagePropertiesTest, TheTwoFlagsAreTextsOutside) {
    for (const auto* name : {"pgBreadcrumb", "pgDynMenu"}) {
        EXPECT_EQ(object().get(name), Value("-1")) << name;
        object().set(name, "1");
        EXPECT_EQ(object().get(name), Value("1")) << name;
        object().set(name, 0);
        EXPECT_EQ(object().get(name), Value("0")) << name;
        object().set(name, " 7 ");
        EXPECT_EQ(object().get(name), Value("7")) << name;
    }
}

TEST_P(PagePropertiesTest, AFlagThatIsNoNumberIsRefused) {
    for (const auto* name : {"pgBreadcrumb", "pgDynMenu"}) {
        object().set(name, "1");
        for (const Value& bad : {Value("yes"), Value(""), Value(true), Value("40000"), Value("1e2")}) {
            EXPECT_NE(refusalOf(name, bad), "") << name;
            EXPECT_EQ(object().get(name), Value("1")) << name;
        }
        EXPECT_EQ(refusalOf(name, "yes"),
                  std::string(name) + " must be a whole number from -32768 to 32767, not \"yes\"");
    }
}

TEST_P(PagePropertiesTest, AnOrderIsHeldAsAWholeNumberOfSixteenBits) {
    object().set("pgOrderId", 32767);
    EXPECT_EQ(object().get("pgOrderId"), Value(32767));
    object().set("pgOrderId", "-32768");
    EXPECT_EQ(object().get("pgOrderId"), Value(-32768));
    object().set("pgOrderId", 2.5);
    EXPECT_EQ(object().get("pgOrderId"), Value(2));
    object().set("pgOrderId", 3.5);
    EXPECT_EQ(object().get("pgOrderId"), Value(4));
}

TEST_P(PagePropertiesTest, AnOrderThatDoesNotFitIsRefused) {
    object().set("pgOrderId", 7);
    for (const Value& bad : {Value(32768), Value(-32769), Value(1e300), Value(32767.5), Value("x")}) {
        EXPECT_NE(refusalOf("pgOrderId", bad), "");
        EXPECT_EQ(object().get("pgOrderId"), Value(7));
    }
    EXPECT_EQ(refusalOf("pgOrderId", 32768),
              "pgOrderId must be a whole number from -32768 to 32767, not 32768");
}

TEST_P(PagePropertiesTest, AnIdThatDoesNotFitIsRefused) {
    for (const auto* name : {"pgTemplateId", "pgStylesheetId", "pgBaseTemplateId", "pgAppId"}) {
        EXPECT_NE(refusalOf(name, 40000), "") << name;
        EXPECT_EQ(object().get(name), Value(-1)) << name;
    }
}

TEST_P(PagePropertiesTest, ReadingAPageAnswersNothingAndFillsTheProperties) {
    page("aa.en.01").id(12).title("Twelve").insert();
    EXPECT_TRUE(object().call("getPage", {{"pageIdent", "12"}}).isEmpty());
    EXPECT_EQ(object().get("pgExists"), Value(true));
    EXPECT_EQ(object().get("pgTitle"), Value("Twelve"));
    EXPECT_EQ(object().get("pgOrderId"), Value(1));
}

}  // namespace
}  // namespace torvex::test
