#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workbench/documents/OutputCollection.h"

namespace quillara {

/// A number that a document holds, or a text, with all that says what it is.
struct TidyRow {
    int Step = 0;  ///< drill steps, down and up, taken before it
    std::optional<std::int32_t> Cases;  ///< of the subset; nothing: not counted
    std::string Result;  ///< kind of the document ("frequencies"); empty: not known
    std::string Variable;  ///< name of one, or of two: "age by sex"; empty: not known
    std::string Category;  ///< of the variable, or of two: "20<x<=30 by Female"; empty: it is about all of the variable
    std::string Statistic;  ///< on one line: "Cumulative Count"
    std::string Weights;  ///< how its document takes the weight: see Subject::WeightWord
    SpreadsheetCell Value;  ///< a number wherever there is one: of dates days since 1970-01-01
};

/// All that the documents hold, in their order, row by row and column by column. Of a stacked plot the places of its
/// layers are left out; of a summary of steps each is a row whose value is its place among them, from 1 for the first.
[[nodiscard]] std::vector<TidyRow> TidyRows(const OutputCollection& outputs);

}  // namespace quillara
