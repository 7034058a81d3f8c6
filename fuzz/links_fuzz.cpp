#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>

#include "delivery/LinkScan.h"
#include "delivery/cServer.h"
#include "platform/db/RowSource.h"
#include "platform/text/Text.h"
#include "support/TestHost.h"

using namespace torvex;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

/// Gives every tag back, and makes sure that it is one.
class KeepingPolicy final : public LinkPolicy {
  public:
    void prepare(const std::vector<std::string>& startTags) override { prepared_ = startTags.size(); }
    std::string rewrite(std::string startTag, LinkTag kind) override {
        require(prepared_-- > 0);
        require(text::startsWith(startTag, kind == LinkTag::Anchor ? "<a " : "<area "));
        require(startTag.find('>') == startTag.size() - 1);
        return startTag;
    }

  private:
    std::size_t prepared_ = 0;
};

/// Takes every anchor away.
class DroppingPolicy final : public LinkPolicy {
  public:
    void prepare(const std::vector<std::string>& /*startTags*/) override {}
    std::string rewrite(std::string startTag, LinkTag kind) override {
        return kind == LinkTag::Anchor ? std::string() : startTag;
    }
};

/// One row for each value that is asked for: an online page or a document.
class EchoedRows final : public db::Rows::Source {
  public:
    explicit EchoedRows(db::Parameters parameters) {
        for (const db::Parameter& parameter : parameters) {
            const auto* asked = std::get_if<std::string_view>(&parameter);
            nodes_.emplace_back(asked == nullptr ? "aa.bb.01" : *asked);
            const auto* number = std::get_if<double>(&parameter);
            numbers_.push_back(number == nullptr ? 7 : *number);
        }
    }

    bool next() override { return ++row_ < static_cast<std::ptrdiff_t>(nodes_.size()); }
    std::size_t columns() const override { return names.size(); }
    std::string_view columnName(std::size_t index) const override { return names.at(index); }
    bool isNull(std::size_t index) const override { return text(index).empty(); }
    std::string_view view(std::size_t index) const override {
        if (names.at(index) == "type") return "P";
        if (names.at(index) == "doc_filename") return "plan of 'x'.pdf";
        const bool isNode = names.at(index) == "nodeId" || names.at(index) == "liveNode";
        return isNode ? std::string_view(nodes_.at(row())) : std::string_view();
    }
    std::string text(std::size_t index) const override { return std::string(view(index)); }
    double number(std::size_t index, double /*ifNull*/) const override {
        return names.at(index) == "pageId" ? numbers_.at(row()) : 1;
    }
    Value value(std::size_t index) const override { return text(index); }

  private:
    static constexpr std::array<std::string_view, 8> names = {
        "pageId", "nodeId", "liveNode", "type", "online", "onlineFrom", "onlineTo", "doc_filename"};

    std::size_t row() const { return static_cast<std::size_t>(row_); }

    std::vector<std::string> nodes_;
    std::vector<double> numbers_;
    std::ptrdiff_t row_ = -1;
};

/// A database where everything is there, or nothing.
class FakeConnection final : public db::Connection {
  public:
    bool hasRows = false;

    db::Engine engine() const override { return db::Engine::Sqlite; }
    const std::string& connectionText() const override { return text_; }
    db::Rows query(std::string_view /*statement*/, db::Parameters parameters) override {
        return db::Rows(std::make_unique<EchoedRows>(hasRows ? parameters : db::Parameters()));
    }
    std::int64_t execute(std::string_view /*statement*/, db::Parameters /*parameters*/) override { return 0; }
    void executeScript(const std::string& /*script*/) override {}
    void begin() override {}
    void beginReading() override {}
    void commit() override {}
    void rollback() override {}
    db::ScopeMemory* memory() override { return nullptr; }

  private:
    std::string text_;
};

void scan(std::string_view html) {
    constexpr std::string_view maskSign = "\u00A7";
    KeepingPolicy keeping;
    const std::string kept = rewriteLinks(html, keeping);
    require(text::equals(kept, html) || html.find(maskSign) != std::string_view::npos);
    DroppingPolicy dropping;
    require(rewriteLinks(html, dropping).size() <= html.size());
}

void build(const std::string& html) {
    for (int mode = 0; mode < 8; ++mode) {
        test::TestHost host;
        FakeConnection connection;
        host.application.set("torvex_frames", (mode & 1) != 0);
        host.application.set("torvex_hyperlink_check", (mode & 2) != 0);
        connection.hasRows = (mode & 4) != 0;
        host.application.set("tvx_default_pageId", 7);
        cServer server(host.context());
        server.connect(connection);
        server.buildLinks(html, "aa");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string html(reinterpret_cast<const char*>(data), size);
    scan(html);
    build(html);
    return 0;
}
