#include "platform/xml/WorkerMessages.h"

#include <cstdint>

#include "platform/workers/Packing.h"

namespace torvex::workerMessages {

namespace {

void pack(Packing& packing, const XmlText& document) {
    packing.number(document.blanks == XmlBlanks::Drop ? 1 : 0).text(document.charset).text(document.bytes);
}

XmlText readDocument(Unpacking& unpacking) {
    XmlText read;
    read.blanks = unpacking.number() == 1 ? XmlBlanks::Drop : XmlBlanks::Keep;
    read.charset = unpacking.text();
    read.bytes = unpacking.text();
    return read;
}

}  // namespace

std::string write(const XmlText& stylesheet, const XmlText* data, const NamedValues& parameters) {
    Packing packing;
    pack(packing, stylesheet);
    packing.number(data == nullptr ? 0 : 1);
    if (data != nullptr) pack(packing, *data);
    packing.number(parameters.size());
    for (const auto& [name, value] : parameters) packing.text(name).text(value);
    return packing.take();
}

std::string write(const Reply& reply) {
    return Packing().number(static_cast<std::uint32_t>(reply.faultCode)).text(reply.output).take();
}

Request readRequest(std::string_view message) {
    Unpacking unpacking(message);
    Request request;
    request.stylesheet = readDocument(unpacking);
    if (unpacking.number() == 1) request.data = readDocument(unpacking);
    for (std::uint64_t left = unpacking.number(); left > 0; --left) {
        const std::string_view name = unpacking.text();
        request.parameters.emplace_back(name, unpacking.text());
    }
    return request;
}

Reply readReply(std::string_view message) {
    Unpacking unpacking(message);
    Reply reply;
    reply.faultCode = static_cast<int>(static_cast<std::uint32_t>(unpacking.number()));
    reply.output = unpacking.text();
    return reply;
}

}  // namespace torvex::workerMessages
