#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "workbench/documents/OutputCollection.h"

namespace quillara {

struct ShownColumn {
    std::vector<std::string> NameLines;
    bool HoldsTexts = false;  ///< shown on the left, not on the right as numbers are
    std::string Variable{};  ///< whose numbers it holds, in a table of several variables side by side
};

struct ShownCell {
    std::string Text;
    std::optional<double> Percent;  ///< in a column of percents that aren't cumulative
};

struct ShownRow {
    std::string Name;
    std::vector<ShownCell> Cells;  ///< one per column
};

/// A spreadsheet in words: what every view for people shows, all texts as ShownLine gives them.
struct ShownTable {
    std::string Title;
    std::vector<std::string> CaptionLines;  ///< what stands below the title
    std::string Corner;
    std::vector<ShownColumn> Columns;
    std::vector<ShownRow> Rows;
    std::string Note;  ///< a line below the table; may be empty
    bool IsContinued = false;  ///< a further table of the document before it, without a title of its own
};

[[nodiscard]] ShownTable ShowTable(const SpreadsheetDocument& document);

/// What a frequency table says of missing data below it: "Missing: Not stated 12, blank 3"; empty: nothing.
[[nodiscard]] std::string MissingText(const SpreadsheetDocument& document);

/// The table of a spreadsheet, or those with the numbers of a graph: at least one, of which the first bears the title.
[[nodiscard]] std::vector<ShownTable> ShowTables(const DocumentContent& content);

/// The same of a document among others: without the caption of the analysis where the host tells the steps and the
/// subset itself.
[[nodiscard]] std::vector<ShownTable> ShowTables(const OutputCollection& outputs, const OutputEntry& entry);

/// The results of one step: entries First up to, but without, Last of the collection.
struct StepResults {
    int Step = 0;
    std::size_t First = 0;
    std::size_t Last = 0;
};

/// The entries in their order, cut wherever the step changes.
[[nodiscard]] std::vector<StepResults> ResultsByStep(const OutputCollection& outputs);

/// What a step is and what it left: "All cases, 891 cases" for step 0, "Up: age, 144 of 891 cases" for another; empty
/// for a step without a text.
[[nodiscard]] std::string StepText(const OutputCollection& outputs, int step);

/// The steps in force behind it, one each ("sex = female"), when its own text doesn't say them all.
[[nodiscard]] std::vector<std::string> StepsInForceText(const OutputCollection& outputs, int step);

/// What is left behind a step, 0 being before the first; nothing: not counted.
[[nodiscard]] std::optional<SubsetSize> LeftBehind(const OutputCollection& outputs, int step);

}  // namespace quillara
