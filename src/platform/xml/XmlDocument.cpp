#include "platform/xml/XmlDocument.h"

#include <algorithm>
#include <iterator>
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

/// What is counted while a document is parsed.
struct Watch {
    XmlLimits limits;
    int elements = 0;
    int attributes = 0;
    const char* refusal = nullptr;
};

/// The parser goes no further; the reason is ours, not its.
void refuse(void* parser, const char* reason) {
    auto* context = static_cast<xmlParserCtxtPtr>(parser);
    auto* watch = static_cast<Watch*>(context->_private);
    if (watch->refusal == nullptr) watch->refusal = reason;
    xmlStopParser(context);
}

/// An entity can make much of little, or be made of what lies elsewhere; no feed needs one.
void refuseEntity(void* parser, const xmlChar*, int, const xmlChar*, const xmlChar*, xmlChar*) {
    refuse(parser, "the document declares entities");
}

void refuseUnparsedEntity(void* parser, const xmlChar*, const xmlChar*, const xmlChar*, const xmlChar*) {
    refuse(parser, "the document declares entities");
}

void startElement(void* parser, const xmlChar* name, const xmlChar* prefix, const xmlChar* address,
                  int namespaceCount, const xmlChar** namespaces, int attributeCount, int defaultCount,
                  const xmlChar** attributes) {
    auto* watch = static_cast<Watch*>(static_cast<xmlParserCtxtPtr>(parser)->_private);
    watch->attributes += attributeCount + namespaceCount;
    if (++watch->elements > watch->limits.elements)
        return refuse(parser, "the document has too many elements");
    if (watch->attributes > watch->limits.attributes) {
        return refuse(parser, "the document has too many attributes");
    }
    xmlSAX2StartElementNs(parser, name, prefix, address, namespaceCount, namespaces, attributeCount,
                          defaultCount, attributes);
}

/// Goes over the bytes of markup and counts the attributes of each tag, roughly and from above.
class TagScan {
  public:
    explicit TagScan(std::string_view bytes) : bytes_(bytes) {}

    int mostAttributes() {
        while ((at_ = bytes_.find('<', at_)) != std::string_view::npos) {
            ++at_;
            if (!skip("!--", "-->") && !skip("![CDATA[", "]]>") && !skip("?", "?>")) readTag();
        }
        return most_;
    }

  private:
    bool skip(std::string_view opening, std::string_view closing) {
        if (!bytes_.substr(at_).starts_with(opening)) return false;
        const std::size_t end = bytes_.find(closing, at_ + opening.size());
        at_ = end == std::string_view::npos ? bytes_.size() : end;
        return true;
    }

    void readTag() {
        int count = 0;
        char quote = 0;
        for (; at_ < bytes_.size() && (quote != 0 || (bytes_[at_] != '>' && bytes_[at_] != '<')); ++at_) {
            const char c = bytes_[at_];
            if (quote != 0) {
                if (c == quote) quote = 0;
            } else if (c == '"' || c == '\'') {
                quote = c;
            } else if (c == '=') {
                ++count;
            }
        }
        most_ = std::max(most_, count);
    }

    std::string_view bytes_;
    std::size_t at_ = 0;
    int most_ = 0;
};

/// The parser compares each attribute of an element with all others, so this is looked at before. In the wide
/// encodings the marks stand among zeros.
void checkAttributes(std::string_view bytes, const XmlLimits& limits) {
    std::string narrow;
    if (bytes.find('\0') != std::string_view::npos) {
        narrow.reserve(bytes.size() / 2);
        std::copy_if(bytes.begin(), bytes.end(), std::back_inserter(narrow), [](char c) { return c != 0; });
        bytes = narrow;
    }
    if (TagScan(bytes).mostAttributes() > limits.attributesOfElement) {
        throw XmlError("an element has too many attributes", -1);
    }
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
    const auto* watch = static_cast<const Watch*>(parser->_private);
    if (watch->refusal != nullptr) {
        const int line = parser->input == nullptr ? 0 : parser->input->line;
        return {"line " + std::to_string(line) + ": " + watch->refusal, -1};
    }
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

XmlDocument XmlDocument::parse(std::string_view bytes, XmlBlanks blanks, const std::string& charset,
                               const XmlLimits& limits) {
    initialiseLibrary();
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        throw XmlError("the document is too large", -1);
    }
    checkAttributes(bytes, limits);
    const Parser parser(xmlNewParserCtxt());
    if (!parser) throw std::bad_alloc();
    Watch watch{limits};
    parser->_private = &watch;
    parser->sax->entityDecl = &refuseEntity;
    parser->sax->unparsedEntityDecl = &refuseUnparsedEntity;
    parser->sax->startElementNs = &startElement;
    int options = XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_NOCDATA | XML_PARSE_COMPACT |
                  XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
    const char* encoding = encodingOf(bytes, charset);
    if (encoding != nullptr) options |= XML_PARSE_IGNORE_ENC;
    XmlDocument document(xmlCtxtReadMemory(parser.get(), bytes.data(), static_cast<int>(bytes.size()),
                                           nullptr, encoding, options));
    if (document.get() == nullptr || watch.refusal != nullptr) throw failure(parser.get());
    if (blanks == XmlBlanks::Drop) dropBlanks(document.get());
    return document;
}

}  // namespace torvex
