// What a grid of cases shows, where no screen is needed: order, subset, texts, search, copy.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "workbench/data/Calendar.h"
#include "workbench/data/MissingReasons.h"
#include "workbench/exploration/CaseArrangement.h"
#include "workbench/exploration/CaseTexts.h"

namespace quillara {
namespace {

using testing::ElementsAre;

constexpr double None = std::numeric_limits<double>::quiet_NaN();
constexpr auto Never = [] { return false; };

Variable Numbers(const std::string& name, std::vector<double> values, ValueKind kind = ValueKind::Number) {
    Variable variable;
    variable.Name = name;
    variable.Kind = kind;
    EncodeNumbers(variable, std::move(values));
    return variable;
}

DataTable TableOf(std::vector<Variable> variables) {
    DataTable table;
    table.Cases = static_cast<std::int32_t>(variables.front().Values.size());
    table.Variables = std::move(variables);
    return table;
}

std::vector<std::size_t> RowsOf(const CaseArrangement& arranged) {
    std::vector<std::size_t> rows;
    for (std::size_t place = 0; place < arranged.Count(); ++place) {
        rows.push_back(arranged.RowAt(place));
    }
    return rows;
}

TEST(CaseGrid, OrderIsStableAndMissingValuesComeLast) {
    const DataTable table = TableOf({Numbers("x", {2, -1.5, None, 2, -0.0, 0.0, None, 1e300})});
    const auto order = [&](const CaseOrder& wanted, const RowSet* kept = nullptr) {
        return RowsOf(*CaseArrangement::Of(table, wanted, kept, Never));
    };
    EXPECT_THAT(order({}), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7));
    EXPECT_THAT(order({0, false}), ElementsAre(1, 4, 5, 0, 3, 7, 2, 6));
    EXPECT_THAT(order({0, true}), ElementsAre(7, 0, 3, 4, 5, 1, 2, 6));
    RowSet kept(8);
    for (const std::size_t row : {0, 2, 3, 7}) {
        kept.Insert(row);
    }
    EXPECT_THAT(order({}, &kept), ElementsAre(0, 2, 3, 7));
    EXPECT_THAT(order({0, true}, &kept), ElementsAre(7, 0, 3, 2));
    const auto arranged = CaseArrangement::Of(table, {}, &kept, Never);
    EXPECT_EQ(arranged->PlaceOf(3), 2U);
    EXPECT_EQ(arranged->PlaceOf(4), std::nullopt);
    const RowSet nothing(8);
    EXPECT_THAT(order({0, false}, &nothing), ElementsAre());
}

/// Whatever form the values are kept in, the order is that of a plain stable sort.
TEST(CaseGrid, EveryFormOfColumnIsSortedAlike) {
    std::mt19937 random(7);
    for (const int distinct : {1, 200, 60000, 2000000}) {
        for (const double unit : {1.0, 0.37}) {
            std::vector<double> values(100'000);
            for (double& value : values) {
                const int drawn = std::uniform_int_distribution(-distinct, distinct)(random);
                value = drawn % 17 == 3 ? None : drawn * unit;
            }
            std::vector<std::size_t> expected(values.size());
            std::iota(expected.begin(), expected.end(), std::size_t{0});
            std::ranges::stable_sort(expected, [&](std::size_t left, std::size_t right) {
                return values[left] < values[right] || (std::isnan(values[right]) && !std::isnan(values[left]));
            });
            const DataTable table = TableOf({Numbers("x", values)});
            EXPECT_EQ(RowsOf(*CaseArrangement::Of(table, {0, false}, nullptr, Never)), expected);
        }
    }
    const DataTable table = TableOf({Numbers("x", {2, 1})});
    EXPECT_FALSE(CaseArrangement::Of(table, {0, false}, nullptr, [] { return true; }));
}

struct Fields : testing::Test {
    Fields() {
        Variable sex = Numbers("sex", {1, 2, None, None});
        sex.Labels = {{1.0, {"Male", ""}}, {2.0, {"Female", ""}}};
        auto reasons = std::make_shared<MissingReasons>();
        reasons->Reasons = {{.Number = 9.0, .Label = "Refused"}};
        reasons->Places = Column({0, 0, 1, 0});
        sex.Reasons = reasons;
        Variable name;
        name.Name = "name";
        EncodeTexts(name, {"Zo\u00eb", std::nullopt, "a\tb", "Zoe"});
        name.Kind = ValueKind::Text;
        const double day = *DaysFromText("2024-02-29");
        Table = TableOf({sex, name, Numbers("pay", {0.1 + 0.2, 1234567.25, -3, None}),
                         Numbers("born", {day, day + 1, None, day}, ValueKind::Date),
                         Numbers("at", {3600, 59, 0, None}, ValueKind::TimeOfDay)});
    }
    [[nodiscard]] std::vector<std::string> Texts(std::size_t row, ValueWriting writing) const {
        std::vector<std::string> texts;
        for (const Variable& variable : Table.Variables) {
            const FieldText field = TextOfField(variable, row, writing);
            texts.push_back(field.IsMissing ? "(" + field.Text + ")" : field.Text);
        }
        return texts;
    }
    DataTable Table;
};

TEST_F(Fields, SayWhatStandsThere) {
    EXPECT_THAT(Texts(0, ValueWriting::Labels),
                ElementsAre("Male", "Zo\u00eb", "0.30000000000000004", "2024-02-29", "01:00:00"));
    EXPECT_THAT(Texts(1, ValueWriting::Codes), ElementsAre("2", "()", "1234567.25", "2024-03-01", "00:00:59"));
    EXPECT_THAT(Texts(2, ValueWriting::Labels), ElementsAre("(Refused)", "a\tb", "-3", "()", "00:00:00"));
    EXPECT_THAT(Texts(2, ValueWriting::Codes), ElementsAre("(9)", "a\tb", "-3", "()", "00:00:00"));
    EXPECT_THAT(Texts(3, ValueWriting::Labels), ElementsAre("()", "Zoe", "()", "2024-02-29", "()"));
}

TEST_F(Fields, AreFoundRoundFromThePresentOneOn) {
    const CaseArrangement plain(Table);
    const auto find = [&](FieldSearch search) {
        const auto found = FindField(Table, plain, search, Never);
        return found ? std::pair(static_cast<int>(found->Place), static_cast<int>(found->Variable)) : std::pair(-1, -1);
    };
    constexpr auto labels = ValueWriting::Labels;
    EXPECT_EQ(find({"ZO\u00cb", labels, 3, 4}), std::pair(0, 1));
    EXPECT_EQ(find({"zo", labels, 0, 1}), std::pair(3, 1));
    EXPECT_EQ(find({"zo", labels, 0, 1, true}), std::pair(3, 1));
    EXPECT_EQ(find({"male", labels, 0, 0}), std::pair(1, 0));
    EXPECT_EQ(find({"male", ValueWriting::Codes, 0, 0}), std::pair(-1, -1));
    EXPECT_EQ(find({"refused", labels, 0, 0}), std::pair(2, 0));
    EXPECT_EQ(find({"2024-02", labels, 0, 3}), std::pair(3, 3));
    EXPECT_EQ(find({"", labels, 0, 0}), std::pair(-1, -1));
    EXPECT_FALSE(FindField(Table, plain, {"zo"}, [] { return true; }));
}

TEST_F(Fields, AreCopiedAsLinesOfASheet) {
    const auto sorted = CaseArrangement::Of(Table, {2, false}, nullptr, Never);
    EXPECT_EQ(FieldsAsText(Table, *sorted, {0, 1}, {0, 1}, ValueWriting::Labels),
              "sex\tname\nRefused\t\"a\tb\"\nMale\tZo\u00eb\n");
}

}  // namespace
}  // namespace quillara
