#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>
#include <random>
#include <set>

#include "host/CaseConditions.h"
#include "host/TableColumns.h"
#include "tests/workbench/hosting/TestAnalysis.h"

namespace quillara {
namespace {

constexpr std::int32_t Cases = 40;

/// What a pass sees, one line per case, up to the end or a stop: a skipped case, or its values and weight.
using Seen = std::vector<std::string>;

std::string Line(const std::vector<double>& values, double weight) {
    return testing::PrintToString(values) + (weight > 0 ? testing::PrintToString(weight) : "no weight");
}

Seen ReadSingly(CAnalysisSupport& analysis) {
    Seen seen;
    double values[4] = {};
    for (int i = 1; i <= Cases; ++i) {
        int weighted = -1;
        int tag = -1;
        double weight = -1;
        const int result = analysis.cstrtw(i, values, &weighted, &weight, &tag);
        if (result == 0 && analysis.lookbr() != 0) {
            seen.push_back("stop");
            break;
        }
        EXPECT_EQ(tag, 0);
        EXPECT_TRUE(weighted == 1 || weight == 1.0);
        seen.push_back(result == 1 ? "skipped" : Line({values + 1, values + 4}, weight));
    }
    return seen;
}

Seen ReadInBlocks(CAnalysisSupport& analysis, std::int32_t size) {
    Seen seen;
    const std::int16_t variables[] = {1, 2, 3};
    const double* columns[3];
    CaseBlock block;
    block.Columns = columns;
    for (std::int32_t first = 1; first <= Cases; first += block.Count) {
        analysis.GetCaseBlocks()->ReadBlock(first, size, variables, block);
        for (std::int32_t i = 0; i < block.Count; ++i) {
            const CaseResult result = block.Results == nullptr ? CaseResult::Use : block.Results[i];
            if (result == CaseResult::Stop) {
                seen.push_back("stop");
                return seen;
            }
            const double weight = block.Weights == nullptr ? 1.0 : block.Weights[i];
            seen.push_back(result == CaseResult::Skip ? "skipped"
                                                      : Line({columns[0][i], columns[1][i], columns[2][i]}, weight));
        }
    }
    return seen;
}

Seen ReadWhole(CAnalysisSupport& analysis, std::int32_t size) {
    Seen seen;
    TableColumns& table = *analysis.GetTableColumns();
    TableColumn columns[3];
    TableColumn weights;
    for (std::int16_t variable = 1; variable <= 3; ++variable) {
        EXPECT_TRUE(table.FindColumn(variable, columns[variable - 1]));
    }
    EXPECT_TRUE(table.FindWeights(weights));
    for (std::int32_t first = 1; first <= Cases; first += size) {
        const std::int32_t count = std::min(size, Cases - first + 1);
        const std::int32_t before = table.BeginCases(first, count);
        for (std::int32_t row = first - 1; row < first - 1 + before; ++row) {
            const bool isSkipped = table.Selection() != nullptr && table.Selection()[row] == CaseResult::Skip;
            const double weight = weights.Entries == nullptr ? 1.0 : weights.At(row);
            seen.push_back(isSkipped ? "skipped"
                                     : Line({columns[0].At(row), columns[1].At(row), columns[2].At(row)}, weight));
        }
        if (before < count) {
            seen.push_back("stop");
            break;
        }
    }
    return seen;
}

/// Variables a, b and w, a weight that is bad in the first and each fifth case behind it.
DataTable RandomTable(double badWeight = 1, double missingCode = -9999) {
    std::mt19937 random(5);
    std::vector<double> columns[3];
    for (std::int32_t i = 0; i < Cases; ++i) {
        columns[0].push_back(random() % 7);
        columns[1].push_back(i);
        columns[2].push_back(i % 5 == 0 ? badWeight : 0.5 * (random() % 4));
    }
    DataTable table = TableOf({Numbers("a", columns[0]), Numbers("b", columns[1]), Numbers("w", columns[2])});
    table.Variables[2].MissingCode = missingCode;
    return table;
}

/// Lets the `call`-th question for a break be answered with yes, and all behind it; 0: none.
void BreakAt(AnalysisDocument& document, int call) {
    document.Services.BreakRequested = [call, asked = 0]() mutable { return ++asked >= call && call > 0; };
}

TEST(CaseReading, BlocksColumnsAndSingleCasesAreTheSame) {
    std::vector<CaseResult> everyThirdSkipped(Cases, CaseResult::Use);
    for (std::size_t i = 1; i < Cases; i += 3) {
        everyThirdSkipped[i] = CaseResult::Skip;
    }
    for (const auto& [weight, code] : {std::pair{-9999.0, -9999.0}, {999.0, 999.0}, {Infinity, -9999.0}}) {
        const DataTable table = RandomTable(weight, code);
        TestHost host(table);
        for (const int choices : {0, 1, 2, 3}) {
            const bool isWeighted = choices % 2 == 1;
            host.Document.SetWeight(isWeighted ? std::optional<std::size_t>(2) : std::nullopt);
            host.Document.SetSelection(choices / 2 == 1 ? everyThirdSkipped : std::vector<CaseResult>());
            BreakAt(host.Document, 0);
            EXPECT_EQ(ReadSingly(*host.Analysis)[0].find("no weight") != std::string::npos, isWeighted);
            for (int call = 0; call <= Cases + 1; ++call) {
                for (const std::int32_t size : {1, 7, Cases, 1000}) {
                    BreakAt(host.Document, call);
                    const Seen singly = ReadSingly(*host.Analysis);
                    BreakAt(host.Document, call);
                    ASSERT_EQ(ReadInBlocks(*host.Analysis, size), singly) << call;
                    BreakAt(host.Document, call);
                    ASSERT_EQ(ReadWhole(*host.Analysis, size), singly) << call;
                }
            }
        }
    }
}

TEST(CaseReading, ARaisedFlagStopsAtTheNextCaseOfTheSelection) {
    const DataTable table = RandomTable();
    TestHost host(table);
    std::vector<CaseResult> selection(Cases, CaseResult::Skip);
    selection[5] = CaseResult::Use;
    host.Document.SetSelection(selection);
    std::atomic<bool> flag = false;
    host.Document.Services.BreakFlag = &flag;
    EXPECT_EQ(ReadInBlocks(*host.Analysis, 4).size(), static_cast<std::size_t>(Cases));
    flag = true;
    const Seen stopped = {"skipped", "skipped", "skipped", "skipped", "skipped", "stop"};
    EXPECT_EQ(ReadInBlocks(*host.Analysis, 4), stopped);
    EXPECT_EQ(ReadSingly(*host.Analysis), stopped);
}

TEST(CaseReading, BlocksPointIntoTheTableWhereItHasDoubles) {
    DataTable table = RandomTable();
    table.Variables.push_back(table.Variables[1]);
    for (const int doubles : {1, 2}) {
        Column& values = table.Variables[static_cast<std::size_t>(doubles)].Values;
        values = std::vector<double>(values.begin(), values.end());
    }
    TestHost host(table);
    host.Document.SetWeight(2);
    const std::int16_t variables[] = {2, 99, 4};
    const double* columns[3];
    CaseBlock block;
    block.Columns = columns;
    for (const auto& [first, count] : {std::pair{-1, 0}, {0, 0}, {Cases + 1, 0}, {11, 30}}) {
        host.Analysis->GetCaseBlocks()->ReadBlock(first, 1000, variables, block);
        EXPECT_EQ(block.Count, count) << first;
    }
    EXPECT_EQ(columns[0], &table.Variables[1].Values.Doubles()[10]);
    EXPECT_EQ(columns[1][29], 0);
    EXPECT_EQ(block.Weights, &table.Variables[2].Values.Doubles()[10]);
    EXPECT_TRUE(std::equal(columns[0], columns[0] + 30, columns[2]));
    host.Document.OfferCaseBlocks(false);
    EXPECT_EQ(host.Analysis->GetCaseBlocks(), nullptr);
    EXPECT_EQ(host.Analysis->GetTableColumns(), nullptr);
    EXPECT_EQ(host.Analysis->GetCaseConditions(), nullptr);
    EXPECT_EQ(host.Analysis->GetParallelRuns(), nullptr);
    EXPECT_EQ(host.Analysis->GetCaseRevision(), 0);
}

TEST(CaseReading, WholeColumnsStandInTheTable) {
    const DataTable table = RandomTable();
    TestHost host(table);
    TableColumn column;
    EXPECT_TRUE(host.Analysis->GetTableColumns()->FindColumn(1, column));
    EXPECT_EQ(column.Entries, table.Variables[0].Values.Stored().Entries);
    EXPECT_EQ(column.Form, ColumnForm::Codes8);
    EXPECT_TRUE(host.Analysis->GetTableColumns()->FindColumn(99, column));
    EXPECT_EQ(column.At(Cases - 1), 0);
}

TEST(CaseReading, CasesThatMeetConditionsComeAsBitsOrAsRows) {
    std::vector<double> values(300);
    std::iota(values.begin(), values.end(), 0.0);
    const DataTable table = TableOf({Numbers("v", values)});
    TestHost host(table);
    std::vector<CaseResult> selection(300, CaseResult::Use);
    selection[120] = CaseResult::Skip;
    host.Document.SetSelection(selection);
    CaseSubset cases;
    const CaseCondition many[] = {{1, ConditionRule::OpenClosed, 99, 170}};
    EXPECT_TRUE(host.Analysis->GetCaseConditions()->FindCases(many, cases));
    EXPECT_EQ(cases.Count, 70);
    EXPECT_EQ(std::vector(cases.Bits, cases.Bits + 5),
              (std::vector<std::uint64_t>{0, ~std::uint64_t{0} << 36U & ~(std::uint64_t{1} << 56U),
                                          (std::uint64_t{1} << 43U) - 1, 0, 0}));
    const CaseCondition few[] = {many[0], {1, ConditionRule::ClosedOpen, 119, 123}};
    EXPECT_TRUE(host.Analysis->GetCaseConditions()->FindCases(few, cases));
    EXPECT_EQ(cases.Bits, nullptr);
    EXPECT_EQ(std::vector(cases.Rows, cases.Rows + cases.Count), (std::vector<std::int32_t>{119, 121, 122}));
}

TEST(CaseReading, TheRevisionIsNewWithTableSelectionAndWeight) {
    const DataTable table = RandomTable();
    TestHost host(table);
    std::set<std::uint64_t> seen;
    const auto isNew = [&] { return seen.insert(host.Analysis->GetCaseRevision()).second; };
    EXPECT_TRUE(isNew());
    EXPECT_FALSE(isNew());
    host.Document.SetWeight(2);
    EXPECT_TRUE(isNew());
    host.Document.SetSelection(std::vector<CaseResult>(Cases, CaseResult::Skip));
    EXPECT_TRUE(isNew());
    CaseSubset cases;
    EXPECT_TRUE(host.Analysis->GetCaseConditions()->FindCases({}, cases));
    EXPECT_EQ(cases.Count, 0);
    host.Document.SetSelection({});
    EXPECT_TRUE(isNew());
    EXPECT_TRUE(host.Analysis->GetCaseConditions()->FindCases({}, cases));
    EXPECT_EQ(cases.Count, Cases);
    EXPECT_FALSE(isNew());
    const TestHost other(table);
    EXPECT_TRUE(seen.insert(other.Analysis->GetCaseRevision()).second);
}

TEST(CaseReading, ReportsProgressWhileThePassRuns) {
    const DataTable table = RandomTable();
    TestHost host(table);
    std::string events;
    AnalysisServices& services = host.Document.Services;
    services.ProgressStarted = [&](auto text, int total) { events += std::string(text) + std::to_string(total); };
    services.ProgressAdvanced = [&](std::int32_t done) { events += ' ' + std::to_string(done); };
    services.ProgressEnded = [&] { events += " end"; };
    host.Analysis->d_pbar("Reading ");
    host.Analysis->dstart(Cases);
    ReadInBlocks(*host.Analysis, 25);
    ReadSingly(*host.Analysis);
    host.Analysis->dstop();
    host.Analysis->dstop();
    ReadSingly(*host.Analysis);
    EXPECT_EQ(events, "Reading 40 25 40 40 end");
}

}  // namespace
}  // namespace quillara
