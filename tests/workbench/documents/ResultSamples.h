#pragma once

#include <string>
#include <utility>
#include <vector>

#include "workbench/documents/DocumentViews.h"

namespace quillara {

using Cells = std::vector<SpreadsheetCell>;

inline const SpreadsheetCell noCell;

/// A collection with one command whose documents are given.
inline OutputCollection Collection(std::vector<SpreadsheetDocument> documents) {
    OutputCollection outputs;
    outputs.FileName = "people.csv";
    outputs.Cases = 8;
    outputs.Variables = 3;
    outputs.BeginCommand(9060, 0);
    for (SpreadsheetDocument& document : documents) {
        outputs.Add(std::move(document));
    }
    return outputs;
}

/// A table with a single column, named "Value", and rows a, b, c, ...
inline SpreadsheetDocument ColumnTable(const Cells& cells, SpreadsheetColumn column = {"Value", false}) {
    SpreadsheetDocument document{{"Values"}, "", {std::move(column)}, {}};
    for (const SpreadsheetCell& cell : cells) {
        const char name = static_cast<char>('a' + document.Rows.size());
        document.Rows.push_back({std::string(1, name), {cell}});
    }
    return document;
}

inline SpreadsheetDocument FrequencyTable() {
    return {{"Frequency table of sex", "N Total: 8, Selected: 7\nage = 30"},
            "",
            {{"Count", true}, {"Cumulative\nCount", true}, {"Percent(%)", false}, {"Description", false}},
            {{"Female", {3.0, 3.0, 42.857142857142854, std::string("said \"she\", <b>")}},
             {"Male", {4.0, 7.0, 57.142857142857146, noCell}}}};
}

inline SpreadsheetDocument SummaryTable() {
    return {{"Summary of drill-down analysis"},
            "Variable",
            {{"Category", false}},
            {{"age", {std::string("30")}}, {"sex", {std::string("Female")}}}};
}

}  // namespace quillara
