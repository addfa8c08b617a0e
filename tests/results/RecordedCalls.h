#pragma once

#include <optional>
#include <string>

namespace drilltest {

/// The calls by which results were handed to the host since the last time, with all their arguments, in order; a group
/// of arguments a line.
std::string TakeCalls();

/// What the host gives for a scatterplot matrix from now on, which isn't made then; nothing: its own status.
void AnswerScatterplots(std::optional<short> status);

/// Has the n-th write into a new table refused from now on; 0: none.
void RefuseWrite(int call);

/// How much is added to all values that the host reads as data from now on.
void ShiftDataReads(double shift);

/// The text of the module's string table that stands in place of that of an id from now on; null: none does.
void Translate(int id, const char* text);

}  // namespace drilltest
