#pragma once

#include <string>

#include "platform/xml/XmlDocument.h"

struct _xsltTransformContext;  // of libxslt

namespace torvex {

/// What the libraries say while this lives, on this thread. While it compiles a stylesheet, libxslt knows
/// only one process-wide listener; that one hands on to the listener that libxml2 keeps for each thread.
class XslMessages {
  public:
    /// Once in the life of the program, before the first object.
    static void initialise();

    XslMessages();
    XslMessages(const XslMessages&) = delete;
    XslMessages& operator=(const XslMessages&) = delete;
    ~XslMessages();

    /// Has a transformation's messages come here too. The context must not outlive this.
    void listenTo(_xsltTransformContext* context);

    /// An error that names the first thing that went wrong, or `otherwise` when nothing was said. Where the
    /// stylesheet stopped itself, that is the message it stopped with.
    XmlError error(const std::string& otherwise) const;

  private:
    using Listener = void (*)(void*, const char*, ...);

    static void takeFromLibraries(void* self, const char* format, ...);
    static void takeFromTransformation(void* self, const char* format, ...);

    std::string said_;           ///< while compiling, and by expressions
    std::string transformSaid_;  ///< by the transformation, its xsl:message among them
    std::string lastSaid_;       ///< the last piece of that
    Listener listenerBefore_;
    void* contextBefore_;
};

}  // namespace torvex
