#pragma once

#include <functional>
#include <string>
#include <vector>

#include "support/ManagerTest.h"

namespace torvex::test {

/// Lets something happen between the moment an operation begins a change and the change itself.
class InterruptedDatabase final : public db::Database {
  public:
    db::Database* target = nullptr;
    std::function<void()> beforeChange;  ///< runs once

    db::Lease open(std::string_view text, std::string_view user, std::string_view password,
                   db::Purpose purpose) override;
};

/// The base of tests of page setups. In both twins: the root 10 "aa.en"; below it the folder 11 "aa.en.01"
/// ("Eleven"), the page 12 "aa.en.02" ("Twelve") and the system branch 13 with the folder 14 "aa.en.99.01".
/// Base template 1, content template 2 with two bodies, stylesheet 3, application 4, group 5 "Staff".
class SetupTest : public ManagerTest {
  protected:
    using Record = std::function<void(cManager&)>;

    void SetUp() override;

    /// A new object with the record of a content page that inherits its look and passes every test. Its
    /// title is "Fresh".
    cManager& filled();
    cManager& filled(const Record& changes);
    /// Its look is of its own, as a root's must be.
    static void giveDesign(cManager& record);

    std::string saveNew(const std::string& parentIdent = "aa.en", const std::string& insertIdent = "") {
        return manager().saveNewPageSetup("aa", "en", parentIdent, insertIdent);
    }
    std::string saveTwelve() { return manager().savePageSetup("12"); }

    /// Saves a filled record with these changes as a new page below the root, and as the setup of page 12:
    /// both refuse it with the code, and nothing is written.
    void expectRefused(const Record& changes, const std::string& code);
    /// Both take it. `look` is then called with the number of the page; `manager()` is the object.
    void expectSaved(const Record& changes, const std::function<void(PageId)>& look);

    /// Everything that a setup may write, as one text. Tables that are gone are left out.
    std::string content();
    /// Of the design row.
    std::string column(const std::string& name, PageId pageId);
    /// The groups of the design page in the order of their numbers, divided by blanks.
    std::string groupsOf(PageId pageId);
    std::string orderOf(const std::string& nodeId);
    std::string liveOrderOf(const std::string& nodeId);
    /// A stored body of the design.
    void designBody(PageId pageId, int bodyId);
    std::string bodiesOf(PageId pageId);

    /// What happens when the next operation is about to write.
    void whenItWrites(std::function<void()> event);
    void dropDesignRow(PageId pageId);

  private:
    std::string listed(const std::string& statement);

    InterruptedDatabase interrupted_;
    int saved_ = 0;
};

}  // namespace torvex::test
