#include "workbench/documents/OutputCollection.h"

#include <utility>

namespace quillara {

void OutputCollection::BeginCommand(int command, int step) {
    Command = command;
    Step = step;
    OutputIndex = 0;
}

void OutputCollection::Add(SpreadsheetDocument document) {
    Entries.push_back({Command, ++OutputIndex, Step, std::move(document)});
}

}  // namespace quillara
