#include "workbench/hosting/WaitCursor.h"

#include <algorithm>

#include "host/Application.h"

namespace {

// Of one user-interface thread.
thread_local int Depth = 0;
thread_local void (*Hear)(bool isShown) = [](bool) {};

}  // namespace

void BeginWaitCursor() {
    ++Depth;
    Hear(true);
}

void RestoreWaitCursor() {
    Hear(Depth > 0);
}

void EndWaitCursor() {
    Depth = std::max(Depth - 1, 0);
    Hear(Depth > 0);
}

bool quillara::IsWaitCursorShown() {
    return Depth > 0;
}

void quillara::HearWaitCursor(void (*hear)(bool isShown)) {
    Hear = hear;
}
