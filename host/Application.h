#pragma once

// The host application's wait cursor. Calls may nest; none fails.

void BeginWaitCursor();
/// Shows the wait cursor again after something else may have changed it.
void RestoreWaitCursor();
void EndWaitCursor();
