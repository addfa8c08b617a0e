#include "workbench/hosting/WaitCursor.h"

#include <algorithm>

#include "host/Application.h"

namespace {

thread_local int Depth = 0;  // of one user-interface thread

}  // namespace

void BeginWaitCursor() {
    ++Depth;
}

void RestoreWaitCursor() {}

void EndWaitCursor() {
    Depth = std::max(Depth - 1, 0);
}

bool quillara::IsWaitCursorShown() {
    return Depth > 0;
}
