#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "tests/workbench/support/TestAnalysis.h"

using quillara::DataTable;

namespace {

constexpr std::int32_t Cases = 40;

/// What a pass sees, one line per case, up to the end or a stop: a skipped case, or its values and weight.
using Seen = std::vector<std::string>;

std::string Line(const double* values, std::size_t count, double weight) {
    std::string line = weight > 0 ? std::to_string(weight) : "no weight";
    for (std::size_t i = 0; i < count; ++i) {
        line += " " + std::to_string(values[i]);
    }
    return line;
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
        seen.push_back(result == 1 ? "skipped" : Line(values + 1, 3, weight));
    }
    return seen;
}

Seen ReadInBlocks(CaseBlocks& blocks, std::int32_t size) {
    Seen seen;
    const std::int16_t variables[] = {1, 2, 3};
    const double* columns[3];
    CaseBlock block;
    block.Columns = columns;
    for (std::int32_t first = 1; first <= Cases; first += block.Count) {
        blocks.ReadBlock(first, size, variables, block);
        for (std::int32_t i = 0; i < block.Count; ++i) {
            const CaseResult result = block.Results == nullptr ? CaseResult::Use : block.Results[i];
            if (result == CaseResult::Stop) {
                seen.push_back("stop");
                return seen;
            }
            const double values[] = {columns[0][i], columns[1][i], columns[2][i]};
            const double weight = block.Weights == nullptr ? 1.0 : block.Weights[i];
            seen.push_back(result == CaseResult::Skip ? "skipped" : Line(values, 3, weight));
        }
    }
    return seen;
}

DataTable RandomTable(double badWeight, double missingCode) {
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

std::vector<CaseResult> EveryThirdSkipped() {
    std::vector<CaseResult> results(Cases, CaseResult::Use);
    for (std::size_t i = 1; i < results.size(); i += 3) {
        results[i] = CaseResult::Skip;
    }
    return results;
}

/// Lets the `call`-th question for a break be answered with yes, and all behind it.
void BreakAt(CAnalysisDoc& document, int call) {
    document.Services.BreakRequested = [call, asked = 0]() mutable { return ++asked >= call; };
}

TEST(CaseReading, BlocksAndSingleCasesAreTheSame) {
    const double infinity = std::numeric_limits<double>::infinity();
    const std::pair<double, double> badWeights[] = {{-9999, -9999}, {999, 999}, {infinity, -9999}};
    for (const auto& [weight, code] : badWeights) {
        const DataTable table = RandomTable(weight, code);
        TestHost host(table);
        for (const bool weighted : {false, true}) {
            for (const bool selected : {false, true}) {
                host.Document.SetWeight(weighted ? std::optional<std::size_t>(2) : std::nullopt);
                host.Document.SetSelection(selected ? EveryThirdSkipped() : std::vector<CaseResult>());
                for (int call = 0; call <= Cases + 1; ++call) {
                    for (const std::int32_t size : {1, 7, Cases, 1000}) {
                        host.Document.Services.BreakRequested = nullptr;
                        if (call > 0) {
                            BreakAt(host.Document, call);
                        }
                        const Seen singly = ReadSingly(*host.Analysis);
                        if (call > 0) {
                            BreakAt(host.Document, call);
                        }
                        ASSERT_EQ(ReadInBlocks(*host.Analysis->GetCaseBlocks(), size), singly) << call;
                    }
                }
            }
        }
    }
}

TEST(CaseReading, MissingAndInfiniteWeightsDropTheirCases) {
    for (const double bad : {-9999.0, std::numeric_limits<double>::infinity()}) {
        const DataTable table = RandomTable(bad, -9999);
        TestHost host(table);
        host.Document.SetWeight(2);
        EXPECT_EQ(ReadSingly(*host.Analysis)[0].substr(0, 9), "no weight");
    }
}

TEST(CaseReading, ARaisedFlagStopsAtTheNextCaseOfTheSelection) {
    const DataTable table = RandomTable(1, -9999);
    TestHost host(table);
    std::vector<CaseResult> selection(Cases, CaseResult::Skip);
    selection[5] = CaseResult::Use;
    host.Document.SetSelection(selection);
    std::atomic<bool> flag = false;
    host.Document.Services.BreakFlag = &flag;
    EXPECT_EQ(ReadInBlocks(*host.Analysis->GetCaseBlocks(), 4).size(), static_cast<std::size_t>(Cases));
    flag = true;
    EXPECT_THAT(ReadInBlocks(*host.Analysis->GetCaseBlocks(), 4),
                testing::ElementsAre("skipped", "skipped", "skipped", "skipped", "skipped", "stop"));
    EXPECT_EQ(ReadInBlocks(*host.Analysis->GetCaseBlocks(), 4), ReadSingly(*host.Analysis));
}

TEST(CaseReading, BlocksPointIntoTheTable) {
    const DataTable table = RandomTable(1, -9999);
    TestHost host(table);
    host.Document.SetWeight(2);
    const std::int16_t variables[] = {2, 99};
    const double* columns[2];
    CaseBlock block;
    block.Columns = columns;
    host.Analysis->GetCaseBlocks()->ReadBlock(11, 1000, variables, block);
    EXPECT_EQ(block.Count, 30);
    EXPECT_EQ(columns[0], &table.Variables[1].Values[10]);
    EXPECT_EQ(columns[1][29], 0);
    EXPECT_EQ(block.Weights, &table.Variables[2].Values[10]);
    EXPECT_EQ(block.Results, nullptr);
    for (const std::int32_t first : {-1, 0, Cases + 1}) {
        host.Analysis->GetCaseBlocks()->ReadBlock(first, 10, variables, block);
        EXPECT_EQ(block.Count, 0);
    }
    host.Document.OfferCaseBlocks(false);
    EXPECT_EQ(host.Analysis->GetCaseBlocks(), nullptr);
}

TEST(CaseReading, ReportsProgressWhileThePassRuns) {
    const DataTable table = RandomTable(1, -9999);
    TestHost host(table);
    Seen events;
    host.Document.Services.ProgressStarted = [&](auto text, int total) {
        events.push_back(std::string(text) + std::to_string(total));
    };
    host.Document.Services.ProgressAdvanced = [&](std::int32_t done) { events.push_back(std::to_string(done)); };
    host.Document.Services.ProgressEnded = [&] { events.push_back("end"); };
    host.Analysis->d_pbar("Reading ");
    host.Analysis->dstart(Cases);
    ReadInBlocks(*host.Analysis->GetCaseBlocks(), 25);
    ReadSingly(*host.Analysis);
    host.Analysis->dstop();
    host.Analysis->dstop();
    ReadSingly(*host.Analysis);
    EXPECT_THAT(events, testing::ElementsAre("Reading 40", "25", "40", "40", "end"));
}

}  // namespace
