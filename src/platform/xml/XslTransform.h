#pragma once

#include <string>

#include "platform/Request.h"
#include "platform/xml/XmlDocument.h"

namespace torvex {

/// What one transformation may cost. These hold off accidents and crude attacks, with a message; against a
/// stylesheet made with skill they are no wall: that is what XmlWorkers are for.
struct XslLimits {
    /// How deep templates, and the instructions around a call, may nest. A level takes up to 0.7 KB of stack:
    /// this much fits in the 2 MB that a thread has at least.
    int templateDepth = 2500;
    /// Steps of the stylesheet and, counted apart, of the expressions in it: about a second.
    unsigned long operations = 10'000'000;
    /// Templates, variables and the like. The time of compiling grows with the square of their number: this
    /// many take a tenth of a second.
    int topLevelElements = 2000;
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
