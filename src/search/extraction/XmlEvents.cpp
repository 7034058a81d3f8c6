#include "search/extraction/XmlEvents.h"

#include <libxml/parser.h>
#include <memory>
#include <new>

#include "search/extraction/TextExtractor.h"

namespace torvex::catalogue {

namespace {

constexpr int deepest = 200;

std::string_view viewOf(const xmlChar* text) {
    return text == nullptr ? std::string_view() : reinterpret_cast<const char*>(text);
}

}  // namespace

struct XmlFeed::Parser {
    XmlEvents& events;
    xmlParserCtxtPtr context = nullptr;
    int depth = 0;
    bool isTooDeep = false;

    static Parser& of(void* data) { return *static_cast<Parser*>(data); }

    static void start(void* data, const xmlChar* name, const xmlChar*, const xmlChar*, int, const xmlChar**,
                      int count, int, const xmlChar** values) {
        Parser& parser = of(data);
        if (++parser.depth > deepest) {
            parser.isTooDeep = true;
            ::xmlStopParser(parser.context);
            return;
        }
        XmlEvents::Attributes attributes;
        for (int n = 0; n < count; ++n, values += 5) {
            const auto size = static_cast<std::size_t>(values[4] - values[3]);
            attributes.emplace_back(viewOf(values[0]),
                                    std::string_view(reinterpret_cast<const char*>(values[3]), size));
        }
        parser.events.startElement(viewOf(name), attributes);
    }
    static void end(void* data, const xmlChar* name, const xmlChar*, const xmlChar*) {
        Parser& parser = of(data);
        --parser.depth;
        parser.events.endElement(viewOf(name));
    }
    static void text(void* data, const xmlChar* text, int length) {
        of(data).events.characters({reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)});
    }
};

XmlFeed::XmlFeed(XmlEvents& events) : parser_(new Parser{events}) {
    xmlSAXHandler handler{};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = Parser::start;
    handler.endElementNs = Parser::end;
    handler.characters = Parser::text;
    handler.cdataBlock = Parser::text;
    parser_->context = ::xmlCreatePushParserCtxt(&handler, parser_, nullptr, 0, nullptr);
    if (parser_->context == nullptr) {
        delete parser_;
        throw std::bad_alloc();
    }
    ::xmlCtxtUseOptions(parser_->context, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
}

XmlFeed::~XmlFeed() {
    ::xmlFreeDoc(parser_->context->myDoc);
    ::xmlFreeParserCtxt(parser_->context);
    delete parser_;
}

void XmlFeed::parse(std::string_view piece, bool isLast) {
    const int error =
        ::xmlParseChunk(parser_->context, piece.data(), static_cast<int>(piece.size()), isLast ? 1 : 0);
    if (parser_->isTooDeep) throw ExtractionError("its XML is nested too deeply");
    if (error != XML_ERR_OK && parser_->context->wellFormed == 0) throw ExtractionError("its XML is broken");
}

bool XmlFeed::add(std::string_view piece) {
    if (!piece.empty()) parse(piece, false);
    return !parser_->events.isDone();
}

void XmlFeed::finish() {
    parse("", true);
}

}  // namespace torvex::catalogue
