#include "workbench/views/DocumentViews.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "workbench/documents/NamedParts.h"
#include "workbench/views/PlainCharts.h"

namespace quillara {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

using Cells = std::vector<SpreadsheetCell>;
using Limits = std::numeric_limits<double>;

const SpreadsheetCell NoCell;

/// A table with a single column and rows a, b, c, ...
SpreadsheetDocument Column(const Cells& cells, SpreadsheetColumn column = {"Value", false}) {
    SpreadsheetDocument document{{"Values"}, "", {std::move(column)}, {}};
    for (const SpreadsheetCell& cell : cells) {
        document.Rows.push_back({std::string(1, static_cast<char>('a' + document.Rows.size())), {cell}});
    }
    return document;
}

/// About a review variable with a long name, which charts' titles have and those of tables haven't.
const Subject Sex{ResultSide::Review, {{2, "sex", "Sex: as answered", ValueKind::Number, {"Female", "Male"}}}};
const SpreadsheetDocument AboutSex{{"Counts of sex"}, "", {{"Count", true}}, {{"Female", {2.5}}}, Sex};

OutputCollection Collection(const std::vector<DocumentContent>& documents) {
    OutputCollection outputs;
    for (const DocumentContent& document : documents) {
        outputs.Add(document, {9060, 1});
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

TEST(FormatOfFile, GoesByTheEnding) {
    for (const auto& [file, word] :
         std::initializer_list<std::pair<const char*, const char*>>{{"a.json", "json"},
                                                                    {"A.CSV", "csv"},
                                                                    {"x/y.htm", "html"},
                                                                    {"y.html", "html"},
                                                                    {"y.xlsx", "xlsx"},
                                                                    {"json", "text"},
                                                                    {"a.html.txt", "text"}}) {
        EXPECT_EQ(WordOf(FormatOfFile(file)), word) << file;
    }
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
    EXPECT_THAT(TextView(Collection({SpreadsheetDocument{{"T"}, "", {{"Text", false}}, {{"row", {wide}}}}})),
                HasSubstr("\n---  " + std::string(72, '-') + '\n'));
}

/// Too wide: long names and texts take several lines, and the columns come in blocks behind the names of the rows; a
/// name shared by columns stands once over them.
TEST(TextView, WideTablesAreReadable) {
    const std::string name = "Exec-managerial, a name that goes on and on and_never_comes_to_an_end_without_a_blank";
    SpreadsheetDocument table{
        {"T"}, "", {{.Name = "Group", .HoldsWords = true}}, {{name, {"north"}}, {"b", {"south"}}}};
    for (const char* statistic : {"Mean", "Std.Dev.", "Median"}) {
        table.Columns.push_back({std::string("income\n") + statistic, false, "income", statistic});
        table.Rows[0].Cells.emplace_back(123456.5);
        table.Rows[1].Cells.emplace_back(std::string("2024-02-29 12:00:00"));
    }
    EXPECT_EQ('\n' + TextView(Collection({table})), R"(
T

                                               income ---------------------------------
                                        Group                 Mean             Std.Dev.
--------------------------------------  -----  -------------------  -------------------
Exec-managerial, a name that goes on    north             123456.5             123456.5
  and on
  and_never_comes_to_an_end_without_a_
  blank
b                                       south  2024-02-29 12:00:00  2024-02-29 12:00:00

                                               income ------------
                                        Group               Median
--------------------------------------  -----  -------------------
Exec-managerial, a name that goes on    north             123456.5
  and on
  and_never_comes_to_an_end_without_a_
  blank
b                                       south  2024-02-29 12:00:00
)");
}

TEST(CsvBlocksView, TextsAndNumbersAreExact) {
    EXPECT_EQ(TextView({}) + CsvBlocksView({}), "");
    EXPECT_EQ(CsvBlocksView(Collection({SpreadsheetDocument{{"", "line"}, "", {}, {{"", {}}, {"a\rb", {}}}}})),
              "\"\"\nline\n\"\"\n\"\"\n\"a\rb\"\n");
    EXPECT_THAT(CsvBlocksView(Collection({Column({std::string("\u2066x\ty")})})), HasSubstr("a,\"\\u2066x\ty\"\n"));
    EXPECT_EQ(CsvBlocksView(Collection({Column({100000.0, 0.1, -0.0, 1e300, Limits::infinity(), NoCell})})),
              "Values\n,Value\na,100000\nb,0.1\nc,-0\nd,1e+300\ne,\nf,\n");
}

/// The records of the tidy table behind its header.
std::string Tidy(const DocumentContent& content, const std::string& result) {
    OutputCollection outputs;
    outputs.Steps = {{StepKind::Down, "sex", "Female", SubsetSize{7}}};
    outputs.Step = 1;
    outputs.Add(content, {0, 1, result});
    const std::string text = CsvView(outputs);
    return text.substr(text.find('\n') + 1);
}

TEST(CsvView, EveryNumberSaysWhatItIs) {
    const std::string header = "step,cases,result,variable,category,statistic,value\n";
    EXPECT_EQ(CsvView(OutputCollection()), header);
    EXPECT_EQ(CsvView(std::span<const OutputCollection>()), "analysis," + header);
    EXPECT_EQ(CsvView(Collection({Column({100000.0}, {"Mean\nvalue     ", false})})),
              header + "0,,frequencies,,a,Mean value,100000\n");
    EXPECT_EQ(Tidy(AboutSex, "frequencies"), "1,7,frequencies,sex,Female,Count,2.5\n");
    const ShownVariable day{1, "day", "", ValueKind::Date, {}};
    const SpreadsheetDocument means{
        {}, "", {{"Mean", false}, {"SD", false}}, {{"d", {0.1, std::string("-")}}}, {ResultSide::Drill, {day}, {0}}};
    EXPECT_EQ(Tidy(means, "descriptives"), "1,7,descriptives,day,,Mean,0.1\n1,7,descriptives,day,,SD,\n");
    const SpreadsheetDocument steps{
        {}, "", {{"Category", false}}, {{"b", {std::string("y,z")}}, {"a", {std::string("x")}}}};
    EXPECT_EQ(Tidy(steps, "summary"), "1,7,summary,b,\"y,z\",Step,2\n1,7,summary,a,x,Step,1\n");
    const Histogram3DPlot pairs{{"x", "", {"1", "2"}}, {"y", "", {"u", "v"}}, {3, 0, 0.5, 1}, 5};
    EXPECT_THAT(Tidy(GraphDocument{{}, {}, pairs}, "hist3d"), HasSubstr("hist3d,y by x,v by 1,Count,0.5\n"));
}

TEST(HtmlView, EveryTextIsEscapedAndThePageNeedsNoOtherFile) {
    const std::string bad = "<script>&\"";
    const SpreadsheetDocument document{{bad, bad}, bad, {{bad, false}}, {{bad, {bad}}}};
    OutputCollection outputs = Collection({document});
    outputs.FileName = bad;
    outputs.Steps = {{StepKind::Down, bad, bad}};
    outputs.Step = 1;
    outputs.Add(document, {9058, 1});
    for (const char* text : {"<script>", "src=", "://", "@import", "url("}) {
        EXPECT_THAT(HtmlView(outputs), Not(HasSubstr(text)));
    }
    EXPECT_THAT(HtmlView(outputs), HasSubstr("aria-label=\"&lt;script&gt;&amp;&quot;\""));
}

TEST(HtmlView, ContentsLeadToStepsAndTables) {
    OutputCollection outputs = Collection({Column({})});
    outputs.Steps = {{StepKind::Down, "sex", "Female"}, {StepKind::Up, "sex"}};
    outputs.Settings = {"Weight: <w>"};
    outputs.Step = 2;
    outputs.Add(AboutSex, {9060, 1});
    const std::string page = HtmlView(outputs);
    for (const std::string anchor : {"step-1\"", "step-2\"", "table-1\"", "table-2\""}) {
        EXPECT_THAT(page, AllOf(HasSubstr("href=\"#" + anchor), HasSubstr("id=\"" + anchor)));
    }
    for (const char* text :
         {"<p>Weight: &lt;w&gt;</p>", "Counts of sex <span class=\"kind\">(review variables)</span></a>",
          "<h2><span class=\"number\">Step 0</span>All cases</h2>",
          "<h2><span class=\"number\">Step 2</span>Up: sex</h2>",
          "<li><span class=\"number\">Step 2</span>Up: sex</li>"}) {
        EXPECT_THAT(page, HasSubstr(text));
    }
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
    EXPECT_THAT(JsonView(Collection({})), HasSubstr("},\n \"documents\": []}\n"));
    EXPECT_THAT(JsonView(Collection({Column({})})), HasSubstr("\"rows\": []"));
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

/// Two bars, of which the second was never counted.
GraphDocument Bars() {
    Histogram graph;
    graph.X.Labels = {{1.0, "Female"}, {2.0, "M<\xE2\x82"}};
    graph.Series.emplace_back().Points = {{1.0, 2.5}, {Limits::quiet_NaN(), Limits::quiet_NaN()}};
    GraphDocument document{{"Histogram of drill-down variable: sex", "N Total: 8"}, {}, graph};
    NameParts(document);
    return document;
}

TEST(GraphViews, WhatWasNeverCountedHasNoNumber) {
    EXPECT_THAT(JsonView(Collection({Bars()})),
                AllOf(HasSubstr("\"points\": [[1, 2.5], [null, null]]"), HasSubstr("{\"at\": 2, \"text\": \"M<\"}")));
    EXPECT_THAT(TextView(Collection({Bars()})), HasSubstr("Female      2.5\n\n"));
}

TEST(PlainCharts, TitlesSayWhatIsShownOfWhichCases) {
    GraphDocument bars = Bars();
    bars.About = Sex;
    OutputCollection run;
    run.Cases = 9;
    run.Settings = {"Weight: w, rounded to whole numbers"};
    run.Steps = {{StepKind::Down, "age", "30<x<=40", SubsetSize{3}}, {StepKind::Up, "age", {}, SubsetSize{9}}};
    using Lines = std::vector<std::string>;
    EXPECT_EQ(Titled(bars, run, 1, {}).Title, (Lines{"Sex: as answered", "3 of 9 cases", "age = 30<x<=40"}));
    EXPECT_EQ(Titled(bars, run, 2, {"Own"}).Title, (Lines{"Own", "Sex: as answered", "9 of 9 cases"}));
    EXPECT_EQ(Titled(bars, run, 0, {}).Title, (Lines{"Sex: as answered", "N Total: 8"}));  // not counted
    EXPECT_EQ(Titled(bars, run, 2, {"Own", true}).Title, (Lines{"Own", bars.Title[0], bars.Title[1]}));
    const GraphDocument plain = Titled(bars, run, 1, {});
    EXPECT_EQ(SeriesOf(plain)->X.Caption + '/' + SeriesOf(plain)->Y.Caption, "sex/Weighted cases");
    BoxPlot boxes;
    for (const char* name : {"a", "b", "c"}) {
        boxes.Boxes.emplace_back().Variable = name;
    }
    EXPECT_EQ(Titled(GraphDocument{{}, {}, boxes}, run, 0, {}).Title, (Lines{"a, b and c"}));
}

TEST(HtmlView, ReportsSayWhatTheyAreAndHowTheyWereMade) {
    OutputCollection outputs = Collection({Column({})});
    outputs.FileName = "a.csv";
    outputs.Title = "Our <own>";
    outputs.Made = "Made on 2024-02-29";
    outputs.Call = "quillara drill 'a b.csv'";
    const std::string page = HtmlView(outputs);
    for (const char* text : {"<h1>Our &lt;own&gt;</h1><p>a.csv: 0 cases", "<title>Our &lt;own&gt; - ",
                             "<p>Made on 2024-02-29</p>", "<code>quillara drill 'a b.csv'</code>"}) {
        EXPECT_THAT(page, HasSubstr(text));
    }
}

TEST(GraphViews, LayersWithoutANameAreTheirVariable) {
    StackedPlot graph;
    graph.X.Labels = {{1.0, "sex"}};
    for (const double bound : {100.0, 20.0, 0.0}) {
        graph.Series.emplace_back().Points = {{1.0, bound}};
    }
    graph.Series[0].Points[0].IsMissing = true;
    EXPECT_THAT(CsvBlocksView(Collection({GraphDocument{{"Shares"}, {}, graph}})),
                HasSubstr("\nsex,1,20,20\nsex = Missing,2,80,100\n"));
    EXPECT_THAT(Tidy(GraphDocument{{}, {}, graph}, "stacked"),
                HasSubstr("stacked,sex,,Cumulative Percent(%),20\n1,7,stacked,sex,Missing,Percent(%),80\n"));
}

TEST(GraphViews, HtmlHasThePictureBesideItsTable) {
    const auto paint = [](const GraphDocument& graph, PictureUse use) {
        return "<?xml?>\n<svg width=\"1mm\"\n viewBox=\"0 0 9 6\"\n "
               "xmlns=\"http://x\">\n<title>t</title>\n<defs>\n</defs>\n"
               "<g fill=\"none\" stroke-width=\"1\" >\n\n<g fill=\"none\" stroke-opacity=\"1\" "
               "transform=\"matrix(1,0,0,1,0,0)\"\n"
               "font-size=\"12\" \n>\n</g>\n<g fill=\"" +
               std::string(use == PictureUse::DarkPage ? "#101010" : "#ffffff") +
               "\" fill-opacity=\"1\"\nfont-size=\"12\" \n>\n<text>" + graph.Title.back() +
               "</text>\n</g>\n</g>\n</svg>\n";
    };
    GraphDocument bars = Bars();
    bars.About = Sex;
    const GraphDocument boxes{{"Plot"}, {}, BoxPlot{BoxType::MedianQuartilesRange, {}}};
    const OutputCollection outputs = Collection({AboutSex, Column({}), bars, boxes});
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
    EXPECT_THAT(HtmlView(outputs), AllOf(HasSubstr("quartile"), Not(HasSubstr("<svg"))));
}

}  // namespace
}  // namespace quillara
