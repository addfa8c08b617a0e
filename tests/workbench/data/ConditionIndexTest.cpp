#include "workbench/data/ConditionIndex.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/workbench/Tables.h"

namespace quillara {
namespace {

using Random = std::mt19937_64;
using enum ConditionRule;

constexpr double Values[] = {-9999, -Infinity, -2.5, -1, -0.0, 0, 5e-324, 1, 1.5, 2, 3, 7, 1e300, Infinity, Missing};
constexpr ConditionRule Rules[] = {Equal, OpenClosed, OpenClosedNumber, ClosedOpen, Closed, Everything, Nothing};

double AnyValue(Random& random) {
    return Values[random() % std::size(Values)];
}

Variable VariableOf(Column column) {
    Variable variable;
    variable.Values = std::move(column);
    return variable;
}

/// A column of each form, of values around the bounds of the conditions.
DataTable RandomTable(Random& random, std::size_t cases) {
    std::vector<double> doubles;
    std::vector<std::int32_t> integers;
    std::vector<std::uint8_t> bytes;
    std::vector<std::uint16_t> words;
    for (std::size_t i = 0; i < cases; ++i) {
        doubles.push_back(AnyValue(random));
        integers.push_back(static_cast<std::int32_t>(random() % 9) - 3);
        bytes.push_back(static_cast<std::uint8_t>(random() % std::size(Values)));
        words.push_back(static_cast<std::uint16_t>(random() % 400));
    }
    std::vector<double> many(400);
    std::ranges::generate(many, [&] { return AnyValue(random); });
    DataTable table;
    table.Cases = static_cast<std::int32_t>(cases);
    for (Column column :
         {Column(doubles), Column::OfIntegers(integers), Column::OfCodes(bytes, {std::begin(Values), std::end(Values)}),
          Column::OfCodes(words, many)}) {
        table.Variables.push_back(VariableOf(std::move(column)));
    }
    return table;
}

CaseCondition AnyCondition(Random& random) {
    return {static_cast<std::int16_t>(random() % 6), Rules[random() % std::size(Rules)], AnyValue(random),
            AnyValue(random)};
}

using Rows = std::vector<std::size_t>;

Rows RowsOf(const RowSet& cases) {
    Rows rows;
    cases.ForEach([&](std::size_t row) { rows.push_back(row); });
    return rows;
}

/// The same, case by case.
Rows PlainRows(const DataTable& table, const std::vector<CaseResult>& selection,
               const std::vector<CaseCondition>& conditions) {
    Rows rows;
    for (std::size_t row = 0; row < static_cast<std::size_t>(table.Cases); ++row) {
        const bool isSelected = selection.empty() || selection[row] == CaseResult::Use;
        const bool isKept = std::ranges::all_of(conditions, [&](const CaseCondition& condition) {
            const auto index = static_cast<std::size_t>(condition.Variable) - 1;
            return condition.IsMetBy(index < table.Variables.size() ? table.Variables[index].Values[row] : 0.0);
        });
        if (isSelected && isKept) {
            rows.push_back(row);
        }
    }
    return rows;
}

TEST(ConditionIndex, FindsWhatTestingCaseByCaseFinds) {
    Random random(7);
    for (int round = 0; round < 400; ++round) {
        const DataTable table = RandomTable(random, random() % 200);
        ConditionIndex index(random() % 200);  // room for a few sets at most
        std::vector<CaseResult> selection;
        std::vector<CaseCondition> stock(8);
        std::ranges::generate(stock, [&] { return AnyCondition(random); });
        for (int step = 0; step < 12; ++step) {
            if (random() % 4 == 0) {
                selection.assign(random() % 2 == 0 ? 0 : static_cast<std::size_t>(table.Cases), CaseResult::Use);
                std::ranges::for_each(selection,
                                      [&](CaseResult& result) { result = static_cast<CaseResult>(random() % 2); });
                index.Forget();
            }
            std::vector<CaseCondition> conditions(random() % 4);
            std::ranges::generate(conditions, [&] { return stock[random() % stock.size()]; });
            const RowSet& found = index.Find(table, selection, conditions);
            const Rows expected = PlainRows(table, selection, conditions);
            ASSERT_EQ(RowsOf(found), expected) << round << ", " << step;
            ASSERT_EQ(found.Count(), expected.size());
            ASSERT_EQ(found.IsEmpty(), expected.empty());
            for (const Variable& variable : table.Variables) {
                std::string values;
                std::string expectedValues;
                found.ForEachValue(variable.Values, [&](double value) { values += std::to_string(value) + ' '; });
                std::ranges::for_each(
                    expected, [&](std::size_t row) { expectedValues += std::to_string(variable.Values[row]) + ' '; });
                ASSERT_EQ(values, expectedValues);
            }
        }
    }
}

TEST(ConditionIndex, StepsThatComeAndGoReadEachColumnOnce) {
    Random random(8);
    const DataTable table = RandomTable(random, 1000);
    std::vector<CaseCondition> steps;
    for (int i = 0; i < 10; ++i) {
        steps.push_back({static_cast<std::int16_t>(1 + i % 4), Closed, -static_cast<double>(i), 3});
    }
    struct Case {
        std::size_t Bytes;
        std::size_t LeastReads;
        std::size_t MostReads;
    };
    for (const auto& [bytes, least, most] : {Case{1U << 20U, 10, 10}, {128, 54, 99}}) {
        ConditionIndex index(bytes);
        std::vector<CaseCondition> inForce;
        const auto find = [&] { EXPECT_EQ(RowsOf(index.Find(table, {}, inForce)), PlainRows(table, {}, inForce)); };
        for (const CaseCondition& step : steps) {
            inForce.push_back(step);
            find();
        }
        while (!inForce.empty()) {
            inForce.erase(inForce.begin() + static_cast<int>(random() % inForce.size()));
            find();
        }
        EXPECT_GE(index.Reads(), least);
        EXPECT_LE(index.Reads(), most);
    }
}

}  // namespace
}  // namespace quillara
