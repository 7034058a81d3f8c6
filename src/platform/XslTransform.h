#pragma once

#include <string>

#include "platform/Request.h"
#include "platform/XmlDocument.h"

namespace torvex {

/// What one transformation may cost.
struct XslLimits {
    /// How deep templates may call each other. A level takes stack: this much fits in 8 MB with room to
    /// spare.
    int templateDepth = 2000;
    /// Steps of the stylesheet and, counted apart, of the expressions in it; some seconds at the most.
    unsigned long operations = 20'000'000;
};

/// The documents of a transformation and what the stylesheet is told.
struct XslInput {
    XmlDocument stylesheet;
    XmlDocument data;
    /// Every one whose name can be that of a top-level parameter reaches the stylesheet, as plain text; of
    /// two with one name the later counts.
    NamedValues parameters;
};

/// The output as the stylesheet's xsl:output says, but always in UTF-8. A stylesheet reaches no file and no
/// address: xsl:import and xsl:include are refused, document() knows nothing but the stylesheet itself (""),
/// and nothing can be written. Throws `XmlError` for a stylesheet that isn't one, for any error while it runs
/// and for a message with terminate="yes".
std::string transform(XslInput input, const XslLimits& limits = {});

}  // namespace torvex
