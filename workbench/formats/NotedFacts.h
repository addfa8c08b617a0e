#pragma once

#include <string>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/MissingReasons.h"

namespace quillara {

/// How notes call a missing value of a file.
[[nodiscard]] std::string KeyOfReason(const MissingReason& reason);

/// Gives a table that was read from a statistical file what the lines of the file's notes tell of it (see FileNotes.h
/// and NoteKinds.h): names, whole labels, descriptions, names of the cases, the declared weight, the title text. The
/// notes may be older than the file: what they tell of a variable that isn't there is passed over, and so is a whole
/// label that doesn't begin with the one in the file.
void ApplyNotes(DataTable& table, const std::vector<std::string>& lines);

}  // namespace quillara
