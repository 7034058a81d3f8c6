#include "platform/xml/WorkerMessages.h"

#include <cstdint>
#include <cstring>

namespace torvex::workerMessages {

namespace {

class Writer {
  public:
    void number(std::int32_t value) {
        char bytes[sizeof value];
        std::memcpy(bytes, &value, sizeof value);
        message_.append(bytes, sizeof value);
    }
    void text(std::string_view value) {
        number(static_cast<std::int32_t>(value.size()));
        message_.append(value);
    }
    void document(const XmlText& document) {
        number(document.blanks == XmlBlanks::Drop ? 1 : 0);
        text(document.charset);
        text(document.bytes);
    }
    std::string take() { return std::move(message_); }

  private:
    std::string message_;
};

class Reader {
  public:
    explicit Reader(std::string_view message) : rest_(message) {}

    std::int32_t number() {
        std::int32_t value = 0;
        std::memcpy(&value, bytes(sizeof value).data(), sizeof value);
        return value;
    }
    std::string text() {
        const std::int32_t size = number();
        if (size < 0) throw Error("a broken message");
        return std::string(bytes(static_cast<std::size_t>(size)));
    }
    XmlText document() {
        XmlText read;
        read.blanks = number() == 1 ? XmlBlanks::Drop : XmlBlanks::Keep;
        read.charset = text();
        read.bytes = text();
        return read;
    }

  private:
    std::string_view bytes(std::size_t size) {
        if (size > rest_.size()) throw Error("a broken message");
        const std::string_view taken = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return taken;
    }

    std::string_view rest_;
};

}  // namespace

std::string write(const XmlText& stylesheet, const XmlText* data, const NamedValues& parameters) {
    Writer writer;
    writer.document(stylesheet);
    writer.number(data == nullptr ? 0 : 1);
    if (data != nullptr) writer.document(*data);
    writer.number(static_cast<std::int32_t>(parameters.size()));
    for (const auto& [name, value] : parameters) {
        writer.text(name);
        writer.text(value);
    }
    return writer.take();
}

std::string write(const Reply& reply) {
    Writer writer;
    writer.number(reply.faultCode);
    writer.text(reply.output);
    return writer.take();
}

Request readRequest(std::string_view message) {
    Reader reader(message);
    Request request;
    request.stylesheet = reader.document();
    if (reader.number() == 1) request.data = reader.document();
    for (std::int32_t left = reader.number(); left > 0; --left) {
        std::string name = reader.text();
        request.parameters.emplace_back(std::move(name), reader.text());
    }
    return request;
}

Reply readReply(std::string_view message) {
    Reader reader(message);
    Reply reply;
    reply.faultCode = reader.number();
    reply.output = reader.text();
    return reply;
}

}  // namespace torvex::workerMessages
