#include "pages/api/Words.h"

#include <gtest/gtest.h>

#include "operations/register/NeedLabels.h"
#include "operations/register/Register.h"
#include "pages/api/Problem.h"
#include "support/RecordsTest.h"

namespace torvex {
namespace {

class ApiWords : public test::RecordsTest {
  protected:
    void SetUp() override {
        RecordsTest::SetUp();
        if (!HasFatalFailure()) words_.refresh(host.context());
    }
    void expectBoth(int label) {
        for (const std::string language : {"en", "de"})
            EXPECT_NE(words_.sentence(language, label), "") << label << ' ' << language;
    }

  private:
    api::Words words_;
};
INSTANTIATE_TEST_SUITE_P(Engines, ApiWords, test::bothEngines(), test::engineName);

TEST_P(ApiWords, EachRefusalOfTheRegisterHasItsSentenceInBothLanguages) {
    const auto classes = operations::makeRegister();
    for (const auto& entry : classes.classes()) {
        for (const auto& operation : entry.operations) {
            for (const auto& code : operation.codes) {
                if (!code.isRefusal) continue;
                SCOPED_TRACE(entry.name + '.' + operation.name + ' ' + code.meaning);
                EXPECT_GT(code.label.number, 0);
                EXPECT_FALSE(code.label.kind.empty());
                expectBoth(code.label.number);
            }
        }
    }
}

TEST_P(ApiWords, EachProblemHasItsSentenceInBothLanguages) {
    namespace kind = api::kind;
    for (const auto& one :
         {kind::notUnderstood, kind::notLoggedIn, kind::loginLost, kind::badToken,  kind::notCovered,
          kind::noRight,       kind::withheld,    kind::foreign,   kind::notThere,  kind::otherMethod,
          kind::refused,       kind::changed,     kind::tooLarge,  kind::otherType, kind::notFitting,
          kind::tooManyCalls,  kind::tooFast,     kind::lockedOut, kind::failed,    kind::busy}) {
        SCOPED_TRACE(one.name);
        expectBoth(one.label);
    }
    for (const int label : {5016, 5023}) expectBoth(label);
}

TEST_P(ApiWords, WhatAValueNeedsHasItsSentenceInBothLanguages) {
    namespace need = operations::need;
    for (const int label :
         {need::given,     need::knownName,     need::once,       need::number,      need::wholeNumber,
          need::boolean,   need::moment,        need::textFormat, need::text,        need::singleValue,
          need::cleanText, need::smallerNumber, need::writable,   need::days,        need::object,
          need::list,      need::texts,         need::deed,       need::expectation, need::mediaKind,
          need::siteCode,  need::folderNumber,  need::fileName,   need::content})
        expectBoth(label);
}

}  // namespace
}  // namespace torvex
