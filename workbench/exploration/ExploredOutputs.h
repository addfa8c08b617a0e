#pragma once

#include <string>
#include <vector>

#include "platform/CountedPointer.h"
#include "workbench/documents/OutputCollection.h"

namespace quillara {

class Exploration;

/// Documents of an exploration with what they were made from, as views and writers take them. They stand in the order
/// in which they were made; those of a step behind those of the steps before it.
[[nodiscard]] OutputCollection OutputsOf(Exploration& exploration,
                                         std::vector<CountedPointer<ResultDocument>> documents);

/// The same as people read them: graphs in plain words, tables under the cases and steps that they are of. Without an
/// exploration, when it has ended, as they were made.
[[nodiscard]] OutputCollection OutputsForPeople(Exploration* exploration,
                                                const std::vector<CountedPointer<ResultDocument>>& documents);

/// A graph of the exploration as people read it: what it shows in plain words, of how many cases, behind which steps.
[[nodiscard]] GraphDocument GraphForPeople(Exploration& exploration, const ResultDocument& document);
/// What a document of the exploration is made from, a line each: the cases, then the steps.
[[nodiscard]] std::vector<std::string> SubsetLinesOf(Exploration& exploration, const ResultDocument& document);

/// What documents are made from, a line each: the cases and variables of the data, the cases selected, settings.
[[nodiscard]] std::vector<std::string> FactsOf(const OutputCollection& outputs);

/// The name of a file for a document, without an end: "frequencies sex".
[[nodiscard]] std::string FileNameFor(const ResultDocument& document);

}  // namespace quillara
