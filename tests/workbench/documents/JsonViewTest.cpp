#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "tests/workbench/documents/ResultSamples.h"

namespace quillara {
namespace {

std::string WrittenCell(const SpreadsheetCell& cell) {
    const std::string text = JsonView(Collection({ColumnTable({cell})}));
    const std::string front = "\"cells\": [";
    const std::size_t begin = text.find(front) + front.size();
    return text.substr(begin, text.find(']', begin) - begin);
}

TEST(JsonView, WithoutDocuments) {
    EXPECT_EQ(JsonView(Collection({})),
              "{\"data\": {\"file\": \"people.csv\", \"cases\": 8, \"variables\": 3},\n"
              " \"documents\": []}\n");
}

TEST(JsonView, OneRowALineInTheOrderOfKeys) {
    EXPECT_EQ(JsonView(Collection({FrequencyTable(), ColumnTable({})})),
              R"json({"data": {"file": "people.csv", "cases": 8, "variables": 3},
 "documents": [
  {"kind": "spreadsheet", "command": 9060, "sequence": 1, "step": 0,
   "title": ["Frequency table of sex", "N Total: 8, Selected: 7\nage = 30"],
   "corner": "",
   "columns": ["Count", "Cumulative\nCount", "Percent(%)", "Description"],
   "whole": [true, true, false, false],
   "rows": [
    {"name": "Female", "cells": [3, 3, 42.857142857142854, "said \"she\", <b>"]},
    {"name": "Male", "cells": [4, 7, 57.142857142857146, null]}]},
  {"kind": "spreadsheet", "command": 9060, "sequence": 2, "step": 0,
   "title": ["Values"],
   "corner": "",
   "columns": ["Value"],
   "whole": [false],
   "rows": []}]}
)json");
}

TEST(JsonView, SequenceBeginsAnewWithEachCommand) {
    OutputCollection outputs = Collection({SummaryTable(), SummaryTable()});
    outputs.BeginCommand(9058, 2);
    outputs.Add(SummaryTable());
    const auto json = nlohmann::json::parse(JsonView(outputs));
    std::string places;
    for (const auto& document : json["documents"]) {
        places += document["command"].dump() + '/' + document["sequence"].dump() + '@' + document["step"].dump() + ' ';
    }
    EXPECT_EQ(places, "9060/1@0 9060/2@0 9058/1@2 ");
}

TEST(JsonView, NumbersReadBackAsTheSameDouble) {
    using Limits = std::numeric_limits<double>;
    for (const double number : {0.0, -0.0, 0.1, -1.0, 1.0 / 3, 1e15 + 0.5, 9007199254740991.0, 9007199254740992.0, 1e17,
                                1e22, 123456789012345678901234.0, Limits::max(), Limits::min(), Limits::denorm_min()}) {
        const auto back = nlohmann::json::parse(WrittenCell(number)).get<double>();
        EXPECT_EQ(back, number) << WrittenCell(number);
        EXPECT_EQ(std::signbit(back), std::signbit(number)) << WrittenCell(number);
    }
}

TEST(JsonView, Cells) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(WrittenCell(100000.0), "100000");
    EXPECT_EQ(WrittenCell(-9007199254740991.0), "-9007199254740991");
    EXPECT_EQ(WrittenCell(infinity), "null");
    EXPECT_EQ(WrittenCell(-infinity), "null");
    EXPECT_EQ(WrittenCell(std::nan("")), "null");
    EXPECT_EQ(WrittenCell(noCell), "null");
    EXPECT_EQ(WrittenCell(std::string("Mean          ")), "\"Mean          \"");
    EXPECT_EQ(WrittenCell(std::string("\x01\n\"\\\u00e9")), "\"\\u0001\\n\\\"\\\\\u00e9\"");
    EXPECT_EQ(WrittenCell(std::string("a\xFFz")), "\"a\uFFFDz\"");
    EXPECT_EQ(WrittenCell(std::string("cut \xF0\x9F\x98")), "\"cut \"");
}

}  // namespace
}  // namespace quillara
