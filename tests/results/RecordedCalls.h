#pragma once

#include <string>

namespace drilltest {

/// The calls by which results were handed to the host since the last time, with all their arguments, in order; a group
/// of arguments a line.
std::string TakeCalls();

/// Has the n-th write into a new table refused from now on; 0: none.
void RefuseWrite(int call);

}  // namespace drilltest
