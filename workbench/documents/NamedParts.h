#pragma once

#include "workbench/documents/GraphDocument.h"
#include "workbench/documents/SpreadsheetDocument.h"

namespace quillara {

// Gives the parts of a document (bars, slices, layers, rows, labels) the whole names that its subject has for them, and
// marks the part that stands for missing data. A subject that doesn't fit the parts in number says nothing of them:
// bars and slices are then called what their labels say.

void NameParts(GraphDocument& graph);
void NameParts(SpreadsheetDocument& table);

}  // namespace quillara
