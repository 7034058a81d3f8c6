#include "platform/xml/XmlWorker.h"

#include <cstdlib>
#include <cstring>
#include <exception>
#include <libxml/xmlmemory.h>
#include <new>

#include "platform/workers/WorkerSide.h"
#include "platform/xml/WorkerMessages.h"
#include "platform/xml/XslTransform.h"

namespace torvex {

namespace {

using workerMessages::Reply;
using workerMessages::Request;

constexpr std::string_view tooMuchMemory = "it takes too much memory";

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
        workerSide::withLength(workerMessages::write(Reply{std::string(tooMuchMemory), -1}));
    return reply;
}

/// The libraries go on with half a result when they are refused memory, so no refusal gets back to them.
void* orEnd(void* memory) {
    if (memory != nullptr) return memory;
    workerSide::sendAndEnd(outOfMemoryReply());
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
    return workerSide::serve(limits, workerMessages::longest, [](std::string_view request) {
        return workerMessages::write(answered(request));
    });
}

}  // namespace torvex
