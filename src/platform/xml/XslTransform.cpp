#include "platform/xml/XslTransform.h"

#include <libxml/tree.h>
#include <libxslt/documents.h>
#include <libxslt/imports.h>
#include <libxslt/security.h>
#include <libxslt/transform.h>
#include <libxslt/variables.h>
#include <libxslt/xslt.h>
#include <libxslt/xsltInternals.h>
#include <libxslt/xsltutils.h>
#include <map>
#include <memory>
#include <mutex>
#include <new>

#include "platform/text/Text.h"
#include "platform/xml/XslMessages.h"

namespace torvex {

namespace {

struct FreeStylesheet {
    void operator()(xsltStylesheetPtr stylesheet) const { xsltFreeStylesheet(stylesheet); }
};
struct FreeContext {
    void operator()(xsltTransformContextPtr context) const { xsltFreeTransformContext(context); }
};
struct FreeSecurity {
    void operator()(xsltSecurityPrefsPtr security) const { xsltFreeSecurityPrefs(security); }
};
struct FreeDocument {
    void operator()(xmlDocPtr document) const { xmlFreeDoc(document); }
};
using Stylesheet = std::unique_ptr<xsltStylesheet, FreeStylesheet>;
using Context = std::unique_ptr<xsltTransformContext, FreeContext>;
using Security = std::unique_ptr<xsltSecurityPrefs, FreeSecurity>;
using Document = std::unique_ptr<xmlDoc, FreeDocument>;

const xmlChar* xml(const char* text) {
    return reinterpret_cast<const xmlChar*>(text);
}

/// The name of the stylesheet for document(""). Its scheme is one that no loader knows.
constexpr const char* ownAddress = "torvex:stylesheet";

void initialiseLibrary() {
    static std::once_flag once;
    std::call_once(once, [] {
        xsltInit();
        XslMessages::initialise();
    });
}

int refuse(xsltSecurityPrefsPtr, xsltTransformContextPtr, const char*) {
    return 0;
}

/// The stylesheet is at hand under its address, so that allowing it loads nothing.
int allowOwnAddress(xsltSecurityPrefsPtr, xsltTransformContextPtr, const char* address) {
    return std::string_view(address) == ownAddress ? 1 : 0;
}

Security nothingOutside() {
    Security security(xsltNewSecurityPrefs());
    if (!security) throw std::bad_alloc();
    for (const auto option : {XSLT_SECPREF_READ_FILE, XSLT_SECPREF_WRITE_FILE, XSLT_SECPREF_CREATE_DIRECTORY,
                              XSLT_SECPREF_WRITE_NETWORK}) {
        xsltSetSecurityPrefs(security.get(), option, &refuse);
    }
    xsltSetSecurityPrefs(security.get(), XSLT_SECPREF_READ_NETWORK, &allowOwnAddress);
    return security;
}

bool loadsOthers(xmlNodePtr node) {
    // NOLINTNEXTLINE(misc-redundant-expression): the library's macros look at the namespace twice
    return node->type == XML_ELEMENT_NODE && IS_XSLT_ELEM(node) &&
           (IS_XSLT_NAME(node, "import") || IS_XSLT_NAME(node, "include"));
}

/// While a stylesheet is compiled the library asks only process-wide rules and counts nothing, so this is
/// looked at before.
void checkTopLevel(xmlDocPtr stylesheet, const XslLimits& limits) {
    const xmlNodePtr root = xmlDocGetRootElement(stylesheet);
    int elements = 0;
    for (xmlNodePtr node = root == nullptr ? nullptr : root->children; node != nullptr; node = node->next) {
        if (loadsOthers(node)) throw XmlError("xsl:import and xsl:include are not allowed", -1);
        if (node->type == XML_ELEMENT_NODE) ++elements;
    }
    if (elements > limits.topLevelElements) throw XmlError("the stylesheet has too many parts", -1);
}

Stylesheet compile(XmlDocument document, const XslLimits& limits, const XslMessages& messages) {
    checkTopLevel(document.get(), limits);
    document.get()->URL = xmlStrdup(xml(ownAddress));
    Stylesheet stylesheet(xsltParseStylesheetDoc(document.get()));
    if (!stylesheet) throw messages.error("the stylesheet is not valid");
    document.release();
    // It counts the errors that it could live with.
    if (stylesheet->errors > 0) throw messages.error("the stylesheet is not valid");
    xmlFree(stylesheet->encoding);
    stylesheet->encoding = xmlStrdup(xml("UTF-8"));
    return stylesheet;
}

void passParameters(xsltTransformContextPtr context, const NamedValues& parameters) {
    std::map<std::string_view, const std::string*> last;
    for (const auto& [name, value] : parameters) last[name] = &value;
    for (const auto& [name, value] : last) {
        const std::string terminated(name);
        if (xmlValidateNCName(xml(terminated.c_str()), 0) != 0) continue;
        xsltQuoteOneUserParam(context, xml(terminated.c_str()), xml(value->c_str()));
    }
}

void limit(xsltTransformContextPtr context, const XslLimits& limits) {
    context->maxTemplateDepth = limits.templateDepth;
    context->opLimit = limits.operations;
    context->xpathCtxt->opLimit = limits.operations;
    context->xinclude = 0;
}

/// Puts the stylesheet among the documents that are at hand.
void offerItself(xsltTransformContextPtr context, xmlDocPtr stylesheet) {
    const xsltDocumentPtr entry = xsltNewDocument(context, stylesheet);
    if (entry == nullptr) throw std::bad_alloc();
    entry->main = 1;  // so that the context doesn't free what isn't its own
}

std::string written(xmlDocPtr result, xsltStylesheetPtr stylesheet) {
    xmlChar* bytes = nullptr;
    int size = 0;
    if (xsltSaveResultToString(&bytes, &size, result, stylesheet) != 0) {
        throw XmlError("the output can't be written", -1);
    }
    const std::unique_ptr<xmlChar, xmlFreeFunc> owner(bytes, xmlFree);
    if (bytes == nullptr) return {};
    std::string_view text(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size));
    // Written as HTML or XML, the library ends every output with a line break of its own.
    const bool isMarkup = !xmlStrEqual(stylesheet->method, xml("text"));
    if (isMarkup && text.ends_with('\n')) text.remove_suffix(1);
    return text::toValidUtf8(text);
}

}  // namespace

std::string transform(XslInput input, const XslLimits& limits) {
    initialiseLibrary();
    XslMessages messages;
    const Stylesheet stylesheet = compile(std::move(input.stylesheet), limits, messages);
    const Security security = nothingOutside();
    const Context context(xsltNewTransformContext(stylesheet.get(), input.data.get()));
    if (!context) throw std::bad_alloc();
    messages.listenTo(context.get());
    xsltSetCtxtSecurityPrefs(security.get(), context.get());
    limit(context.get(), limits);
    offerItself(context.get(), stylesheet->doc);
    passParameters(context.get(), input.parameters);
    const Document result(xsltApplyStylesheetUser(stylesheet.get(), input.data.get(), nullptr, nullptr,
                                                  nullptr, context.get()));
    if (!result || context->state != XSLT_STATE_OK) throw messages.error("the transformation failed");
    return written(result.get(), stylesheet.get());
}

}  // namespace torvex
