#include <gtest/gtest.h>

#include <random>

#include "tests/workbench/Tables.h"
#include "workbench/hosting/CaseRows.h"

namespace quillara {
namespace {

/// A variable of each form, over and over: codes of 8 and 16 bits, whole numbers, doubles.
DataTable TableOfAllForms(std::size_t variables, std::int32_t cases) {
    DataTable table;
    table.Cases = cases;
    for (std::size_t variable = 0; variable < variables; ++variable) {
        std::vector<std::uint8_t> narrow;
        std::vector<std::uint16_t> wide;
        std::vector<std::int32_t> whole;
        std::vector<double> doubles;
        for (std::int32_t row = 0; row < cases; ++row) {
            whole.push_back(row * 7 - static_cast<std::int32_t>(variable));
            doubles.push_back(row / 3.0 + static_cast<double>(variable));
            narrow.push_back(static_cast<std::uint8_t>(row % 3));
            wide.push_back(static_cast<std::uint16_t>(row % 3));
        }
        const std::vector<double> values{-1.5, static_cast<double>(variable), 1e300};
        const Column forms[] = {Column::OfCodes(narrow, values), Column::OfCodes(wide, values),
                                Column::OfIntegers(whole), doubles};
        table.Variables.emplace_back().Values = forms[variable % std::size(forms)];
    }
    return table;
}

TEST(CaseRows, AreTheCasesOfTheTableInWhateverOrderTheyAreRead) {
    struct Size {
        std::size_t Variables;
        std::int32_t Cases;
    };
    for (const auto [variables, cases] : {Size{0, 3}, Size{1, 1}, Size{5, 300}, Size{40, 129}, Size{3000, 5}}) {
        const DataTable table = TableOfAllForms(variables, cases);
        CaseRows rows(table);
        std::mt19937 random(7);
        std::size_t row = 0;
        for (int reading = 0; reading < 2000; ++reading) {
            const double* values = rows.Row(row);
            ASSERT_EQ(rows.Width(), variables);
            for (std::size_t variable = 0; variable < variables; ++variable) {
                ASSERT_EQ(values[variable], table.Variables[variable].Values[row]) << variable << ' ' << row;
            }
            const std::size_t steps[] = {0, 1, 1, 1, 1, 1, 1, 2, 40, random()};
            row = (row + steps[random() % std::size(steps)]) % static_cast<std::size_t>(cases);
        }
    }
}

}  // namespace
}  // namespace quillara
