#pragma once

#include <new>

class CDefineTask;

/// Fills the two lists from the sets. Throws without memory: lists of other sets may not stand there in silence.
void RefreshLists(CDefineTask& task);

/// Shows the sets of the analysis as they are: captions, lists, current variables and controls.
void ShowSets(CDefineTask& task);

/// Runs what changes the sets. When memory fails on the way they are shown once more, so that the dialog doesn't stay
/// with those of before; the failure goes on.
template <typename Change>
auto ShownAgainOnFailure(CDefineTask& task, Change change) {
    try {
        return change();
    } catch (const std::bad_alloc&) {
        ShowSets(task);
        throw;
    }
}
