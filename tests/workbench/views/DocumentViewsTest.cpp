#include "workbench/views/DocumentViews.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "workbench/documents/NamedParts.h"

namespace quillara {
namespace {

using testing::HasSubstr;
using testing::Not;

using Cells = std::vector<SpreadsheetCell>;
using Limits = std::numeric_limits<double>;

const SpreadsheetCell NoCell;

/// About a review variable with a long name, which charts' titles have and those of tables haven't.
const Subject AboutSex{ResultSide::Review,
                       {{2, "sex", "Sex: as answered", ValueKind::Number, {"Female", "Male"}, false}}};

const SpreadsheetDocument Frequencies = {
    {"Frequency table of sex", "N Total: 8, Selected: 7\nage = 30"},
    "",
    {{"Count", true}, {"Cumulative\nCount", true}, {"Percent(%)", false}, {"Description", false}},
    {{"Female", {3.0, 3.0, 42.857142857142854, std::string("said \"she\", <b>")}},
     {"Male", {4.0, 7.0, 57.142857142857146, NoCell}}},
    AboutSex};

const SpreadsheetDocument Summary = {{"Summary of drill-down analysis"},
                                     "Variable",
                                     {{"Category", false}},
                                     {{"age", {std::string("30")}}, {"sex", {std::string("Female")}}}};

/// A table with a single column and rows a, b, c, ...
SpreadsheetDocument Column(const Cells& cells, SpreadsheetColumn column = {"Value", false}) {
    SpreadsheetDocument document{{"Values"}, "", {std::move(column)}, {}};
    for (const SpreadsheetCell& cell : cells) {
        document.Rows.push_back({std::string(1, static_cast<char>('a' + document.Rows.size())), {cell}});
    }
    return document;
}

/// A collection with the documents of one command and, when there is a text of a step, one of a command behind it.
OutputCollection Collection(const std::vector<SpreadsheetDocument>& documents, const std::string& step = "",
                            const SpreadsheetDocument& behind = Summary) {
    OutputCollection outputs;
    outputs.FileName = "people.csv";
    outputs.Cases = 8;
    outputs.Variables = 3;
    int sequence = 0;
    for (const SpreadsheetDocument& document : documents) {
        outputs.Add(document, {9060, ++sequence});
    }
    if (!step.empty()) {
        outputs.StepTexts = {step};
        outputs.Step = 1;
        outputs.Add(behind, {9058, 1});
    }
    return outputs;
}

std::string Between(const std::string& text, const std::string& front, const std::string& end) {
    const std::size_t begin = text.find(front) + front.size();
    return text.substr(begin, text.find(end, begin) - begin);
}

/// What the text view draws below the header of a table with a single column.
std::string Drawn(const Cells& cells, SpreadsheetColumn column = {"Value", false}) {
    const std::string text = TextView(Collection({Column(cells, std::move(column))}));
    return text.substr(text.find("-\n") + 2);
}

std::string JsonCell(const SpreadsheetCell& cell) {
    return Between(JsonView(Collection({Column({cell})})), "\"cells\": [", "]");
}

TEST(TextView, DrawsTablesBelowEachOther) {
    EXPECT_EQ(TextView(Collection({Frequencies, Summary})), R"(Frequency table of sex
N Total: 8, Selected: 7
age = 30

               Cumulative
        Count       Count  Percent(%)  Description
------  -----  ----------  ----------  ---------------
Female      3           3       42.86  said "she", <b>
Male        4           7       57.14

Summary of drill-down analysis

Variable  Category
--------  --------
age       30
sex       Female
)");
    EXPECT_EQ(TextView(Collection({Column({1.0})}, "Down: sex = Female", Column({2.0}))),
              "Step 0 - All cases\n==================\n\n"
              "Values\n\n   Value\n-  -----\na      1\n\n"
              "Step 1 - Down: sex = Female\n===========================\n\n"
              "Values\n\n   Value\n-  -----\na      2\n");
    EXPECT_EQ(TextView({}) + CsvView({}), "");
}

TEST(TextView, NumbersHaveTheDecimalsThatTheColumnNeeds) {
    const SpreadsheetCell none = std::string("-");
    EXPECT_EQ(Drawn({}), "(no rows)\n");
    EXPECT_EQ(Drawn({1.0, 20.0}), "a      1\nb     20\n");
    EXPECT_EQ(Drawn({1.5, 20.0}), "a    1.5\nb   20.0\n");
    EXPECT_EQ(Drawn({1.23456, -20.0}), "a    1.2346\nb  -20.0000\n");
    EXPECT_EQ(Drawn({1.23456, none, NoCell}), "a  1.2346\nb       -\nc\n");
    EXPECT_EQ(Drawn({1.23456}, {"Percent(%)", false}), "a        1.23\n");
    EXPECT_EQ(Drawn({2.9999999999999996}, {"Value", true}), "a      3\n");
    EXPECT_EQ(Drawn({0.0, 0.00012345678}), "a          0\nb  0.0001235\n");
    EXPECT_EQ(Drawn({0.0031}, {"Percent(%)", false}), "a      0.0031\n");
    EXPECT_EQ(Drawn({1e20, -1e-30}), "a   1e+20\nb  -1e-30\n");
    EXPECT_EQ(Drawn({-0.0, Limits::infinity()}), "a      0\nb\n");
}

TEST(TextView, TextsAreHarmlessAndAligned) {
    const SpreadsheetDocument document{{"T"},
                                       "Name",
                                       {{"Mean          ", false}, {"Text", false}},
                                       {{"\u6771\u4eac", {1.0, std::string("a\tb\r\n")}},
                                        {"e\u0301a", {2.0, std::string("\x1b[31m\u009bx\u202e")}},
                                        {"cut \xE2\x82", {3.0, std::string("\xFF\xC0\x80\xED\xA0\x80")}}}};
    EXPECT_EQ(TextView(Collection({document})),
              "T\n\n"
              "Name  Mean  Text\n"
              "----  ----  -----------------------\n"
              "\u6771\u4eac     1  a b\n"
              "e\u0301a       2  \\u001B[31m\\u009Bx\\u202E\n"
              "cut      3  \uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\n");
}

TEST(TextView, OnlyTheRuleOfFreeTextIsCut) {
    const std::string wide(80, 'w');
    EXPECT_THAT(TextView(Collection({{{"T"}, "", {{"Text", false}}, {{wide, {wide}}}}})),
                HasSubstr('\n' + std::string(80, '-') + "  " + std::string(72, '-') + '\n'));
}

TEST(CsvView, AnEmptyRecordStandsBetweenDocumentsOnly) {
    EXPECT_EQ(CsvView(Collection({Frequencies, Summary})), R"(Frequency table of sex
"N Total: 8, Selected: 7"
age = 30
,Count,Cumulative Count,Percent(%),Description
Female,3,3,42.857142857142854,"said ""she"", <b>"
Male,4,7,57.142857142857146,

Summary of drill-down analysis
Variable,Category
age,30
sex,Female
)");
    EXPECT_EQ(CsvView(Collection({{{"", "line"}, "", {}, {{"", {}}, {"a\rb", {}}}}})),
              "\"\"\nline\n\"\"\n\"\"\n\"a\rb\"\n");
    EXPECT_THAT(CsvView(Collection({Column({std::string("\u2066x\ty")})})), HasSubstr("a,\"\\u2066x\ty\"\n"));
    EXPECT_EQ(CsvView(Collection({Column({100000.0, 0.1, -0.0, 1e300, Limits::infinity(), NoCell})})),
              "Values\n,Value\na,100000\nb,0.1\nc,-0\nd,1e+300\ne,\nf,\n");
}

TEST(HtmlView, ATableHasCaptionAndScopes) {
    EXPECT_EQ(Between(HtmlView(Collection({Frequencies})), "<table>", "</table>"),
              R"(
<caption><div class="caption"><h3>Frequency table of sex</h3><p>N Total: 8, Selected: 7</p><p>age = 30</p></div></caption>
<thead><tr><td></td><th scope="col">Count</th><th scope="col">Cumulative<br>Count</th><th scope="col">Percent<wbr>(%)</th><th scope="col" class="text">Description</th></tr></thead>
<tbody>
<tr><th scope="row">Female</th><td>3</td><td>3</td><td class="share" style="--share:42.857142857142854">42.86</td><td class="text">said &quot;she&quot;, &lt;b&gt;</td></tr>
<tr><th scope="row">Male</th><td>4</td><td>7</td><td class="share" style="--share:57.142857142857146">57.14</td><td class="text"></td></tr>
</tbody>
)");
}

TEST(HtmlView, EveryTextIsEscapedAndThePageNeedsNoOtherFile) {
    const std::string bad = "<script>&\"";
    const SpreadsheetDocument document{{bad, bad}, bad, {{bad, false}}, {{bad, {bad}}}};
    OutputCollection outputs = Collection({document}, bad, document);
    outputs.FileName = bad;
    for (const char* text : {"<script>", "src=", "://", "@import", "url("}) {
        EXPECT_THAT(HtmlView(outputs), Not(HasSubstr(text)));
    }
    EXPECT_THAT(HtmlView(outputs), HasSubstr("aria-label=\"&lt;script&gt;&amp;&quot;\""));
}

TEST(HtmlView, ContentsLeadToStepsAndTables) {
    OutputCollection outputs = Collection({});
    outputs.StepTexts = {"Down: sex = Female", "Up: sex"};
    outputs.Settings = {"Weight: <w>"};
    outputs.Add(Summary, {9060, 1});
    outputs.Step = 2;
    outputs.Add(Frequencies, {9060, 1});
    const std::string page = HtmlView(outputs);
    for (const std::string anchor : {"step-1\"", "step-2\"", "table-1\"", "table-2\""}) {
        EXPECT_THAT(page, AllOf(HasSubstr("href=\"#" + anchor), HasSubstr("id=\"" + anchor)));
    }
    EXPECT_THAT(page, AllOf(HasSubstr("<p>Weight: &lt;w&gt;</p>"),
                            HasSubstr("Frequency table of sex <span class=\"kind\">(review variables)</span></a>")));
    EXPECT_THAT(page, AllOf(HasSubstr("<h2><span class=\"number\">Step 0</span>All cases</h2>"),
                            HasSubstr("<h2><span class=\"number\">Step 2</span>Up: sex</h2>"),
                            HasSubstr("<li><span class=\"number\">Step 1</span>Down: sex = Female</li>")));
}

TEST(JsonView, OneRowALineInTheOrderOfKeys) {
    EXPECT_EQ(JsonView(Collection({Frequencies}, "Down", Column({}))),
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
  {"kind": "spreadsheet", "command": 9058, "sequence": 1, "step": 1,
   "title": ["Values"],
   "corner": "",
   "columns": ["Value"],
   "whole": [false],
   "rows": []}]}
)json");
    EXPECT_THAT(JsonView(Collection({})), HasSubstr("},\n \"documents\": []}\n"));
}

TEST(JsonView, NumbersReadBackAsTheSameDouble) {
    for (const double number : {0.0, -0.0, 0.1, -1.0, 1.0 / 3, 1e15 + 0.5, 9007199254740991.0, 9007199254740992.0, 1e17,
                                1e22, 123456789012345678901234.0, Limits::max(), Limits::min(), Limits::denorm_min()}) {
        const auto back = nlohmann::json::parse(JsonCell(number)).get<double>();
        EXPECT_EQ(back, number) << JsonCell(number);
        EXPECT_EQ(std::signbit(back), std::signbit(number)) << JsonCell(number);
    }
}

TEST(JsonView, Cells) {
    for (const SpreadsheetCell& cell : Cells{Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(), NoCell}) {
        EXPECT_EQ(JsonCell(cell), "null");
    }
    const std::pair<SpreadsheetCell, const char*> cases[] = {
        {100000.0, "100000"},
        {-9007199254740991.0, "-9007199254740991"},
        {"Mean          ", "\"Mean          \""},
        {"\x01\n\"\\\u00e9", "\"\\u0001\\n\\\"\\\\\u00e9\""},
        {"a\xFFz", "\"a\uFFFDz\""},
        {"cut \xF0\x9F\x98", "\"cut \""},
        {"\u200E\x7F", "\"\\u200E\\u007F\""},
    };
    for (const auto& [cell, text] : cases) {
        EXPECT_EQ(JsonCell(cell), text);
    }
}

OutputCollection Graphs(const std::vector<GraphDocument>& graphs) {
    OutputCollection outputs;
    for (const GraphDocument& graph : graphs) {
        outputs.Add(graph, {9061, 1});
    }
    return outputs;
}

GraphDocument Titled(std::vector<std::string> title, GraphContent content, Subject about = {}) {
    GraphDocument graph{std::move(title), std::move(about), std::move(content)};
    NameParts(graph);
    return graph;
}

/// Two bars, of which the second was never counted.
GraphDocument Bars() {
    Histogram graph;
    graph.Flags = 130;
    graph.Options[0] = {8, 0, 0};
    graph.X = {"sex", 0.0, 3.0, 1.0, {{1.0, "Female"}, {2.0, "M<\xE2\x82"}}};
    graph.Y = {"Number of counts", 0.0, 0.5, 1.0, {}};
    graph.Series = {{"", 5, 0, 0, 12, 0.9, 0, {{1.0, 2.5}, {Limits::quiet_NaN(), Limits::quiet_NaN()}}, {}}};
    return Titled({"Histogram of drill-down variable: sex", "N Total: 8"}, graph);
}

const GraphDocument Boxes =
    Titled({"Plot"}, BoxPlot{BoxType::MedianQuartilesRange,
                             {{"age", "Age", 5, 40.0, 30.0, 50.5, 20.0, 70.0, {100.0, 110.0}, {200.0}},
                              {"size", "", 0, 0.0, 0.0, 0.0, 0.0, 0.0, {}, {}}}});
const GraphDocument Scatter = Titled(
    {"Plot"},
    ScatterMatrix{8,
                  {{"a", "A", 3, 1.0, 2.0, 1.5, 0.5, {1.0, 0.5, {1.0, 2.0}}}, {"b", "", 3, 0.0, 9.0, 4.0, 1.0, {}}},
                  {{}, {2, 0.5, 1.0, 0.25}, {2, Limits::quiet_NaN(), 1.0, 4.0}, {}}});
const GraphDocument Bars3D =
    Titled({"Plot"}, Histogram3DPlot{{"sex", "", {"F", "M"}}, {"age", "Age", {"1"}}, {3.0, 4.0}, 7});

GraphDocument Slices() {
    PieChart graph;
    graph.Series = {{"", 10, 0, 0, 0, 0.9, 192, {{1.0, 3.0}, {2.0, 4.0}, {0.0, 0.0}}, {"Female", "Male", ""}}};
    return Titled({"Histogram of drill-down variable: sex", "N Total: 8"}, graph);
}

/// Two columns: layers of 20, 30 and 50 percent from below; all of one layer.
GraphDocument Layers() {
    StackedPlot graph;
    graph.X.Labels = {{1.0, "sex"}, {2.0, "city"}};
    for (const auto& [first, second] : {std::pair{100.0, 100.0}, {50.0, 0.0}, {20.0, -1.0}, {0.0, -1.0}}) {
        const bool isReached = second >= 0.0;
        graph.Series.emplace_back().Points = {{1.0, first}, isReached ? GraphPoint{2.0, second} : GraphPoint{}};
    }
    graph.Series[0].Points[0].IsMissing = true;
    graph.Series[1].Points[0].Name = "Male";
    return Titled({"Shares"}, graph);
}

TEST(GraphViews, TextShowsTheNumbers) {
    EXPECT_EQ(TextView(Graphs({Bars(), Slices(), Layers()})), R"(Histogram of drill-down variable: sex
N Total: 8

Category  Count
--------  -----
Female      2.5


Histogram of drill-down variable: sex
N Total: 8

Category  Count
--------  -----
Female        3
Male          4

Shares

                                  Cumulative
Variable       Layer  Percent(%)  Percent(%)
-------------  -----  ----------  ----------
sex                1          20          20
sex = Male         2          30          50
sex = Missing      3          50         100
city               1         100         100
)");
    EXPECT_EQ(TextView(Graphs({Boxes, Scatter, Bars3D})), R"(Plot

                            Lower     Upper    Lower    Upper  Outlying  Extreme
Variable  Cases  Median  Quartile  Quartile  Whisker  Whisker    Values   Values
--------  -----  ------  --------  --------  -------  -------  --------  -------
age           5      40        30      50.5       20       70         2        1
size          0                                                       0        0

Plot

Variable  Cases  Minimum  Maximum  Mean  Std.Dev.
--------  -----  -------  -------  ----  --------
a             3        1        2   1.5       0.5
b             3        0        9   4.0       1.0

y by x  Cases  Correlation  Intercept  Slope
------  -----  -----------  ---------  -----
a by b      2          0.5          1   0.25
b by a      2                       1   4.00

Plot

age by sex  F  M
----------  -  -
1           3  4
)");
}

TEST(GraphViews, CsvHasTheSameTables) {
    EXPECT_EQ(CsvView(Graphs({Scatter, Bars3D})), R"(Plot
Variable,Cases,Minimum,Maximum,Mean,Std.Dev.
a,3,1,2,1.5,0.5
b,3,0,9,4,1

y by x,Cases,Correlation,Intercept,Slope
a by b,2,0.5,1,0.25
b by a,2,,1,4

Plot
age by sex,F,M
1,3,4
)");
}

TEST(GraphViews, JsonHoldsTheNumbersOfTheCall) {
    EXPECT_THAT(JsonView(Graphs({Bars()})), HasSubstr(R"json(
  {"kind": "graph", "command": 9061, "sequence": 1, "step": 0, "chart": "histogram",
   "title": ["Histogram of drill-down variable: sex", "N Total: 8"],
   "flags": 130,
   "options": [[8, 0, 0], [0, 0, 0], [0, 0, 0]],
   "x": {"caption": "sex", "min": 0, "max": 3, "step": 1, "labels": [{"at": 1, "text": "Female"}, {"at": 2, "text": "M<"}]},
   "y": {"caption": "Number of counts", "min": 0, "max": 0.5, "step": 1, "labels": []},
   "series": [
    {"kind": 5, "color": 12, "width": 0.9, "flags": 0, "points": [[1, 2.5], [null, null]], "labels": []}]}]}
)json"));
}

TEST(GraphViews, JsonHoldsTheStatisticsDrawn) {
    EXPECT_EQ(
        Between(JsonView(Graphs({Boxes})), "\"series\": [\n", "]}]}\n"),
        R"json(    {"kind": 52, "variable": "age", "label": "Age", "cases": 5, "middle": 40, "box": [30, 50.5], "whiskers": [20, 70], "outliers": [100, 110], "extremes": [200]},
    {"kind": 52, "variable": "size", "label": "", "cases": 0, "middle": null, "box": null, "whiskers": null, "outliers": [], "extremes": [])json"
        "}");
    EXPECT_EQ(
        Between(JsonView(Graphs({Scatter})), "\"series\": [\n", "]}]}\n"),
        R"json(    {"variable": "a", "label": "A", "cases": 3, "min": 1, "max": 2, "mean": 1.5, "deviation": 0.5, "histogram": {"low": 1, "step": 0.5, "counts": [1, 2]}},
    {"variable": "b", "label": "", "cases": 3, "min": 0, "max": 9, "mean": 4, "deviation": 1, "histogram": {"low": 0, "step": 1, "counts": []}},
    {"x": "b", "y": "a", "cases": 2, "correlation": 0.5, "intercept": 1, "slope": 0.25},
    {"x": "a", "y": "b", "cases": 2, "correlation": null, "intercept": 1, "slope": 4})json");
    EXPECT_EQ(
        Between(JsonView(Graphs({Bars3D})), "\"series\": [\n", "]}]}\n"),
        R"json(    {"x": {"variable": "sex", "label": "", "labels": ["F", "M"]}, "y": {"variable": "age", "label": "Age", "labels": ["1"]}, "cases": 7, "counts": [[3, 4]]})json");
}

TEST(GraphViews, HtmlHasThePictureBesideItsTable) {
    const auto paint = [](const GraphDocument& graph, bool isDark) {
        return "<?xml?>\n<svg width=\"1mm\"\n viewBox=\"0 0 9 6\"\n "
               "xmlns=\"http://x\">\n<title>t</title>\n<defs>\n</defs>\n"
               "<g fill=\"none\" stroke-width=\"1\" >\n\n<g fill=\"none\" stroke-opacity=\"1\" "
               "transform=\"matrix(1,0,0,1,0,0)\"\n"
               "font-size=\"12\" \n>\n</g>\n<g fill=\"" +
               std::string(isDark ? "#101010" : "#ffffff") + "\" fill-opacity=\"1\"\nfont-size=\"12\" \n>\n<text>" +
               graph.Title.back() + "</text>\n</g>\n</g>\n</svg>\n";
    };
    OutputCollection outputs = Collection({Frequencies});
    outputs.Add(Summary, {9058, 1});
    GraphDocument bars = Bars();
    bars.About = AboutSex;
    outputs.Add(bars, {9061, 1});
    outputs.Add(Boxes, {9084, 1});
    const std::string page = HtmlView(outputs, paint);
    EXPECT_EQ(Between(page, "<figure class=\"chart\" id=\"chart-3\">", "</figure>"), R"svg(
<svg class="picture" role="img" aria-labelledby="chart-3-title" viewBox="0 0 9 6" stroke-linecap="square" stroke-linejoin="bevel"><title id="chart-3-title">Histogram of drill-down variable: sex</title>
<g fill="none" ><g fill="var(--pffffff-101010)"><text>N Total: 8</text>
</g>
</g>
</svg>
)svg");
    EXPECT_LT(page.find("id=\"chart-3\""), page.find("id=\"table-2\""));
    EXPECT_THAT(page, HasSubstr("<details><summary>Numbers</summary>"));
    EXPECT_THAT(page, HasSubstr("--pffffff-101010: #101010;"));
    EXPECT_THAT(page, AllOf(HasSubstr("default-src 'none'"), Not(HasSubstr("://"))));
    EXPECT_THAT(HtmlView(outputs), AllOf(HasSubstr("Quartile"), Not(HasSubstr("<svg"))));
}

}  // namespace
}  // namespace quillara
