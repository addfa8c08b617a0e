#pragma once

#include <string>

namespace drilltest {

/// The calls by which results were handed to the host since the last time, with all their arguments, in order; a group
/// of arguments a line.
std::string TakeCalls();

}  // namespace drilltest
