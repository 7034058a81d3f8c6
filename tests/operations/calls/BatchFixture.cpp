#include "operations/calls/BatchFixture.h"

#include <thread>

namespace torvex::operations {

void Probe::count() {
    const double before = host_.session.number("tvx_counter");
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    host_.session.set("tvx_counter", before + 1);
}

operations::Register classesWithProbe() {
    using namespace operations;
    auto classes = makeRegister().classes();
    classes.push_back(
        describe<Probe>("Probe", "For tests.",
                        {
                            reads("sessionId", &Probe::sessionId, {}, "Tells.", nobody()),
                            reads("now", &Probe::now, {}, "Tells.", nobody()),
                            reads("item", &Probe::item, {argument("name")}, "Tells.", nobody()),
                            reads("abandon", &Probe::abandon, {}, "Abandons.", nobody()),
                            reads("write", &Probe::write, {argument("text")}, "Writes.", nobody()),
                            reads("end", &Probe::end, {}, "Ends.", nobody()),
                            reads("fail", &Probe::fail, {}, "Fails.", nobody()),
                            reads("count", &Probe::count, {}, "Counts.", nobody()),
                        }));
    return Register(std::move(classes));
}

void BatchFixture::SetUp() {
    test::DatabaseTest::SetUp();
    if (HasFatalFailure()) return;
    host_.database.target = &database();
    host_.application.set("torvex_odbc", connectionText());
    host_.application.set("torvex_install_path", "/install/");
    torvex::Setup(host_.context()).deriveApplication();
    engine_ = std::make_unique<BatchEngine>(classes_, host_.services());
}

void BatchFixture::TearDown() {
    engine_.reset();
    test::DatabaseTest::TearDown();
}

boost::json::object BatchFixture::ask(const std::string& line) {
    return boost::json::parse(engine_->run(line)).as_object();
}

std::string BatchFixture::errorOf(const std::string& line) {
    const auto answer = ask(line);
    if (!answer.contains("error")) return "no error";
    const auto& error = answer.at("error").as_object();
    EXPECT_EQ(error.at("number").as_int64(), 40000);
    return std::string(error.at("description").as_string());
}

boost::json::value json(std::string_view text) {
    return boost::json::parse(text);
}

}  // namespace torvex::operations
