// Whatever a client may send over HTTP/2, frames behind the opening words: the session, what gathers its requests, and
// answers to them. The first byte chooses how the rest is cut in pieces, and what is answered.

#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>

#include "host/http2/AnswerFields.h"
#include "host/http2/RequestFields.h"
#include "host/http2/Session.h"

namespace {

using namespace torvex;

constexpr std::size_t mostOut = 64 * 1024;
constexpr RequestLimits limits{.requestLine = 512, .header = 1024, .fields = 20, .body = 2048};

void require(bool holds) {
    if (!holds) std::abort();
}

class Client;

/// One request, answered as soon as it is whole.
class Asked final : public http2::StreamEvents {
  public:
    Asked(Client& client, std::int32_t id) : client_(client), fields_(limits), id_(id) {}

    bool onField(std::string_view name, std::string_view value) override {
        fields_.add(name, value);
        return !fields_.isExcessive();
    }
    void onHead(bool isWhole) override;
    void onBody(std::string_view bytes) override;
    void onEnd() override;
    void onClosed() override;
    std::uint64_t unsent() const override { return left_; }
    bool takeBody(std::string& out, std::size_t count) override {
        require(count <= left_);
        out.append(count, 'x');
        left_ -= count;
        return left_ % 7 != 3;  // as of a file that has become shorter
    }

  private:
    Client& client_;
    http2::RequestFields fields_;
    RequestHead head_;
    std::int32_t id_;
    std::uint64_t left_ = 0;
    bool isAnswered_ = false;
};

class Client final : public http2::SessionEvents {
  public:
    explicit Client(std::size_t length) : length_(length), session_(*this, 4, limits.header) {}

    http2::StreamEvents* onRequest(std::int32_t id) override {
        require(asked_.size() <= 4);
        return asked_.emplace(id, std::make_unique<Asked>(*this, id)).first->second.get();
    }
    void onSent(std::size_t) override {}

    void send(std::string_view bytes) {
        session_.take(bytes);
        for (int i = 0; i < 8; ++i) {
            std::string out;
            session_.give(out);
            require(out.size() <= mostOut);
        }
        ended_.clear();
    }
    std::uint64_t answer(std::int32_t id, Asked& asked, std::uint64_t& left) {
        Answer answer;
        answer.addField("X-Name", " value ");
        answer.addField("Connection", "close");
        answer.body = std::string(length_, 'x');
        http2::AnswerFields fields;
        fields.set(answer, "now", "Date-Of: all\r\n");
        left = length_;
        session_.answer(id, asked, fields.list());
        return left;
    }
    void end(std::int32_t id) {
        ended_.push_back(std::move(asked_.at(id)));
        asked_.erase(id);
    }
    http2::Session& session() { return session_; }

  private:
    std::size_t length_;
    http2::Session session_;
    std::map<std::int32_t, std::unique_ptr<Asked>> asked_;
    std::vector<std::unique_ptr<Asked>> ended_;
};

void Asked::onHead(bool isWhole) {
    const int status = fields_.makeHead(head_, !isWhole);
    if (status == 0) {
        require(!head_.target.empty() && head_.count("host") == 1 && head_.count("cookie") <= 1);
        require(head_.fields.size() <= limits.fields && head_.target.size() <= limits.requestLine);
    }
    if (isWhole) onEnd();
}

void Asked::onBody(std::string_view bytes) {
    client_.session().consume(id_, bytes.size());
}

void Asked::onEnd() {
    if (!isAnswered_) client_.answer(id_, *this, left_);
    isAnswered_ = true;
}

void Asked::onClosed() {
    client_.end(id_);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const std::size_t piece = data[0] < 128 ? size : data[0] - 127U;
    std::string_view coming(reinterpret_cast<const char*>(data) + 1, size - 1);
    Client client(static_cast<std::size_t>(data[0]) * 200);
    client.send(NGHTTP2_CLIENT_MAGIC);
    while (!coming.empty()) {
        client.send(coming.substr(0, piece));
        coming.remove_prefix(std::min(piece, coming.size()));
    }
    return 0;
}
