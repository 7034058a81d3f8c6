#pragma once

namespace torvex {

/// The argument by which the program becomes a helper for XML. For the program itself alone.
inline constexpr const char* xmlWorkerArgument = "--xml-worker";

/// The life of a helper: confines itself, then reads requests from the socket that is its standard input and
/// answers them there, until the other side goes or it has worked long enough. The exit code of the process.
int runXmlWorker();

}  // namespace torvex
