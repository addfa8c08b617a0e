#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workbench/documents/Remarks.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/documents/StepTaken.h"

namespace quillara {

/// A result document and where it comes from.
struct OutputEntry {
    int Command = 0;  ///< number of the button that made it; 0: the host makes it itself
    std::string Result;  ///< its kind by the name ("frequencies"); empty: not known
    int Sequence = 0;  ///< its place among the documents of that command, from 1
    int Step = 0;  ///< drill steps, down and up, taken before it
    DocumentContent Content;
};

/// The documents of one run, in the order in which they were made, and what they were made from.
struct OutputCollection {
    std::string FileName;  ///< of the data, without its folder
    std::int32_t Cases = 0;
    int Variables = 0;
    std::string Title;  ///< of a report; empty: the name of the data
    std::string Made;  ///< when, and with what, for a report; empty: not said
    std::string Call;  ///< of the program that made it; empty: not said
    std::vector<std::string> Settings;  ///< what applies to all documents ("Selection: age > 30"), for people
    std::optional<SubsetSize> Selected;  ///< the cases before the first step; nothing: not counted
    std::vector<StepTaken> Steps;
    bool ShowsAllStates = false;  ///< those too that have no document
    Remarks Noticed;
    std::vector<OutputEntry> Entries;
    int Step = 0;  ///< what the documents that come next belong to

    /// Takes a document.
    void Add(DocumentContent document, const DocumentOrigin& origin);
};

}  // namespace quillara
