#include "platform/xml/XmlWorker.h"

#include <cstdlib>
#include <cstring>
#include <exception>
#include <libxml/xmlmemory.h>
#include <new>
#include <optional>
#include <sys/socket.h>
#include <unistd.h>

#include "platform/xml/WorkerLimits.h"
#include "platform/xml/WorkerMessages.h"
#include "platform/xml/XslTransform.h"

namespace torvex {

namespace {

using workerMessages::Reply;
using workerMessages::Request;

constexpr std::string_view tooMuchMemory = "it takes too much memory";

bool readAll(std::string& bytes, std::size_t size) {
    bytes.resize(size);
    for (std::size_t at = 0; at < size;) {
        const ssize_t taken = ::read(STDIN_FILENO, bytes.data() + at, size - at);
        if (taken <= 0) return false;
        at += static_cast<std::size_t>(taken);
    }
    return true;
}

std::optional<std::string> receive() {
    std::string message;
    if (!readAll(message, workerMessages::lengthSize)) return std::nullopt;
    const std::size_t size = workerMessages::readLength(message);
    if (size > workerMessages::longest || !readAll(message, size)) return std::nullopt;
    return message;
}

bool send(std::string_view message) {
    const std::string bytes = workerMessages::withLength(message);
    for (std::string_view rest = bytes; !rest.empty();) {
        const ssize_t sent = ::send(STDIN_FILENO, rest.data(), rest.size(), MSG_NOSIGNAL);
        if (sent <= 0) return false;
        rest.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

XmlDocument parsed(const XmlText& text) {
    return XmlDocument::parse(text.bytes, text.blanks, text.charset);
}

Reply done(const Request& request) {
    XmlDocument stylesheet = parsed(request.stylesheet);
    if (!request.data) return {};
    XmlDocument data = parsed(*request.data);
    return {transform({std::move(stylesheet), std::move(data), request.parameters}), 0};
}

Reply answered(std::string_view message) {
    try {
        return done(workerMessages::readRequest(message));
    } catch (const XmlError& error) {
        return {error.what(), error.code()};
    } catch (const std::bad_alloc&) {
        return {std::string(tooMuchMemory), -1};
    } catch (const std::exception& error) {
        return {error.what(), -1};
    }
}

/// Made at the first call, while there is memory.
const std::string& outOfMemoryReply() {
    static const std::string reply =
        workerMessages::withLength(workerMessages::write(Reply{std::string(tooMuchMemory), -1}));
    return reply;
}

/// The libraries go on with half a result when they are refused memory, so no refusal gets back to them.
void* orEnd(void* memory) {
    if (memory != nullptr) return memory;
    const std::string& reply = outOfMemoryReply();
    const bool isSent = ::send(STDIN_FILENO, reply.data(), reply.size(), MSG_NOSIGNAL) > 0;
    ::_exit(isSent ? 0 : 1);
}
void* allocate(std::size_t size) {
    return orEnd(std::malloc(size > 0 ? size : 1));
}
void* reallocate(void* memory, std::size_t size) {
    return orEnd(std::realloc(memory, size > 0 ? size : 1));
}
char* duplicate(const char* text) {
    const std::size_t size = std::strlen(text) + 1;
    return static_cast<char*>(std::memcpy(allocate(size), text, size));
}

/// Whatever the libraries read from files at their first use, they read now.
void warmUp() {
    const XmlText stylesheet{
        "<x:stylesheet version='1.0' xmlns:x='http://www.w3.org/1999/XSL/Transform'>"
        "<x:output method='html'/><x:template match='/'><p>&#233;</p></x:template>"
        "</x:stylesheet>",
        XmlBlanks::Keep,
        {}};
    const XmlText data{"<?xml version='1.0' encoding='iso-8859-1'?><r/>", XmlBlanks::Keep, {}};
    answered(workerMessages::write(stylesheet, &data, {}));
}

}  // namespace

int runXmlWorker() {
    constexpr WorkerLimits limits;
    outOfMemoryReply();
    ::xmlMemSetup(std::free, allocate, reallocate, duplicate);
    warmUp();
    try {
        confineSelf(limits);
    } catch (const std::exception&) {
        return 1;
    }
    // Some time of its life is left for what is at work when the end is near.
    const double enough = limits.cpuSecondsOfLife - 2.0 * (limits.cpuSeconds + 1);
    while (processorTime() < enough) {
        const std::optional<std::string> message = receive();
        if (!message) break;
        allowProcessorTime(limits);
        if (!send(workerMessages::write(answered(*message)))) break;
    }
    return 0;
}

}  // namespace torvex
