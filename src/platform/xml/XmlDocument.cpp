#include "platform/xml/XmlDocument.h"

#include <libxml/SAX2.h>
#include <libxml/encoding.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>
#include <limits>
#include <mutex>
#include <new>

#include "platform/text/Text.h"

namespace torvex {

namespace {

struct FreeParser {
    void operator()(xmlParserCtxtPtr parser) const { xmlFreeParserCtxt(parser); }
};
using Parser = std::unique_ptr<xmlParserCtxt, FreeParser>;

void initialiseLibrary() {
    static std::once_flag once;
    std::call_once(once, [] { xmlInitParser(); });
}

/// Entities are put in where they are used, so one that names a file or an address must never be known.
void declareEntity(void* parser, const xmlChar* name, int type, const xmlChar* publicId,
                   const xmlChar* systemId, xmlChar* content) {
    if (type != XML_INTERNAL_GENERAL_ENTITY && type != XML_INTERNAL_PARAMETER_ENTITY) return;
    xmlSAX2EntityDecl(parser, name, type, publicId, systemId, content);
}

bool hasMark(std::string_view bytes) {
    return bytes.starts_with("\xEF\xBB\xBF") || bytes.starts_with("\xFF\xFE") ||
           bytes.starts_with("\xFE\xFF");
}

/// Nothing when the document itself is to say it.
const char* encodingOf(std::string_view bytes, const std::string& charset) {
    if (charset.empty() || hasMark(bytes)) return nullptr;
    const xmlCharEncodingHandlerPtr known = xmlFindCharEncodingHandler(charset.c_str());
    if (known == nullptr) return nullptr;
    xmlCharEncCloseFunc(known);
    return charset.c_str();
}

std::string oneLine(std::string_view message) {
    std::string line(message.substr(0, message.find('\n')));
    return text::toValidUtf8(text::trim(line));
}

XmlError failure(xmlParserCtxtPtr parser) {
    const xmlError* error = xmlCtxtGetLastError(parser);
    if (error == nullptr || error->message == nullptr) return {"the document can't be parsed", -1};
    return {"line " + std::to_string(error->line) + ": " + oneLine(error->message), error->code};
}

xmlNodePtr nextInDocument(xmlNodePtr node) {
    // What lies under other kinds of nodes is not this document's own.
    if (node->type == XML_ELEMENT_NODE && node->children != nullptr) return node->children;
    while (node != nullptr && node->next == nullptr) node = node->parent;
    return node == nullptr ? nullptr : node->next;
}

bool isDroppable(xmlNodePtr node) {
    return node->type == XML_TEXT_NODE && xmlIsBlankNode(node) == 1 &&
           xmlNodeGetSpacePreserve(node->parent) != 1;
}

void dropBlanks(xmlDocPtr document) {
    for (xmlNodePtr node = document->children; node != nullptr;) {
        const xmlNodePtr next = nextInDocument(node);
        if (isDroppable(node)) {
            xmlUnlinkNode(node);
            xmlFreeNode(node);
        }
        node = next;
    }
}

}  // namespace

void XmlDocument::Free::operator()(_xmlDoc* document) const {
    xmlFreeDoc(document);
}

XmlDocument XmlDocument::parse(std::string_view bytes, XmlBlanks blanks, const std::string& charset) {
    initialiseLibrary();
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        throw XmlError("the document is too large", -1);
    }
    const Parser parser(xmlNewParserCtxt());
    if (!parser) throw std::bad_alloc();
    parser->sax->entityDecl = &declareEntity;
    int options = XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_NOCDATA | XML_PARSE_COMPACT |
                  XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
    const char* encoding = encodingOf(bytes, charset);
    if (encoding != nullptr) options |= XML_PARSE_IGNORE_ENC;
    XmlDocument document(xmlCtxtReadMemory(parser.get(), bytes.data(), static_cast<int>(bytes.size()),
                                           nullptr, encoding, options));
    if (document.get() == nullptr) throw failure(parser.get());
    if (blanks == XmlBlanks::Drop) dropBlanks(document.get());
    return document;
}

}  // namespace torvex
