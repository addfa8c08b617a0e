#include "workbench/exploration/LabelEdits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "workbench/data/Errors.h"
#include "workbench/data/MissingReasons.h"
#include "workbench/exploration/KindChange.h"
#include "workbench/numbers/ExactNumbers.h"

namespace quillara {
namespace {

TEST(LabelEdits, MakeAnotherTableAndLeaveTheFirst) {
    DataTable table;
    table.Cases = 3;
    table.Variables.resize(2);
    Variable& sex = table.Variables[0];
    sex.Name = "sex";
    sex.LongName = "Sex";
    sex.Labels = {{1.0, {"Male", ""}}, {2.0, {"Female", "all of them"}}};
    sex.Values = Column({1, 2, 2});
    LabelEdits edits;
    edits.SetLabel(table, 0, "Sex of the respondent");
    edits.SetTexts(table, 0, 1, {"Men", ""});
    edits.SetTexts(table, 0, 2, {});
    edits.SetTexts(table, 0, 3, {"Other", "new"});
    edits.SetLabel(table, 1, "gone");
    edits.SetLabel(table, 1, "");
    EXPECT_EQ(edits.LabelOf(table, 0), "Sex of the respondent");
    EXPECT_EQ(edits.LabelOf(table, 1), "");
    EXPECT_EQ(edits.TextsOf(table, 0, 1).Label, "Men");
    EXPECT_EQ(edits.TextsOf(table, 0, 2).Label, "");
    const auto edited = edits.Apply(table);
    EXPECT_EQ(edited->Variables[0].LongName, "Sex of the respondent");
    EXPECT_EQ(edited->Variables[0].Labels.size(), 2U);
    EXPECT_EQ(*edited->Variables[0].LabelOf(3), "Other");
    EXPECT_EQ(edited->Variables[0].Values.Stored().Entries, sex.Values.Stored().Entries);
    EXPECT_EQ(sex.LongName, "Sex");
    EXPECT_EQ(*sex.LabelOf(1), "Male");
    edits.SetLabel(table, 0, "Sex");
    for (const double value : {1.0, 2.0, 3.0}) {
        const auto known = sex.Labels.find(value);
        edits.SetTexts(table, 0, value, known == sex.Labels.end() ? ValueTexts{} : known->second);
    }
    EXPECT_TRUE(edits.IsEmpty());
}

/// A variable of some values, as texts where they are given so.
Variable VariableOf(ValueKind kind, const std::vector<std::string>& values) {
    Variable variable;
    variable.Name = "v";
    variable.Kind = kind;
    variable.Format = "F8.2";
    if (kind == ValueKind::Text) {
        std::vector<std::optional<std::string>> texts;
        for (const std::string& value : values) {
            texts.push_back(value.empty() ? std::nullopt : std::optional(value));
        }
        EncodeTexts(variable, texts);
    } else {
        std::vector<double> numbers;
        for (const std::string& value : values) {
            numbers.push_back(value.empty() ? std::nan("") : std::stod(value));
        }
        EncodeNumbers(variable, numbers);
    }
    return variable;
}

std::vector<std::string> ValuesOf(const Variable& variable) {
    std::vector<std::string> values;
    for (const double value : variable.Values) {
        values.push_back(variable.IsMissing(value)          ? ""
                         : variable.Kind == ValueKind::Text ? *variable.LabelOf(value)
                                                            : ExactNumberText(value));
    }
    return values;
}

TEST(KindChange, ValuesStayOrTheChangeIsRefused) {
    constexpr ValueKind number = ValueKind::Number, text = ValueKind::Text, date = ValueKind::Date;
    struct Case {
        ValueKind From;
        std::vector<std::string> Values;
        ValueKind To;
        std::vector<std::string> Changed;
        const char* Refusal = "";
    };
    const std::vector<Case> cases{
        {number, {"2", "-0.5", "", "10"}, text, {"2", "-0.5", "", "10"}},
        {text, {"2", "-0.5", "", "1e3"}, number, {"2", "-0.5", "", "1000"}},
        {number, {"20240131", "", "19691231"}, date, {"19753", "", "-1"}},
        {date, {"19753", "", "-1"}, number, {"20240131", "", "19691231"}},
        {date, {"19753", ""}, text, {"2024-01-31", ""}},
        {text, {"2024-01-31", "20240201"}, date, {"19753", "19754"}},
        {text, {"a", "1", "b"}, number, {}, "its value \"a\" is no number, like 1 other."},
        {text, {"1", "01"}, number, {}, "\"01\" and \"1\" would become the same number."},
        {number, {"20240132"}, date, {}, "\"20240132\" is no date."},
        {ValueKind::TimeOfDay, {"60"}, text, {}, "holds times"},
    };
    for (const Case& each : cases) {
        const Variable before = VariableOf(each.From, each.Values);
        try {
            const Variable changed = OfKind(before, each.To);
            EXPECT_EQ(ValuesOf(changed), each.Changed);
            EXPECT_EQ(*each.Refusal, '\0');
            EXPECT_EQ(changed.Format, "");
        } catch (const DataError& refusal) {
            EXPECT_NE(std::string(refusal.what()).find(each.Refusal), std::string::npos) << refusal.what();
            EXPECT_NE(*each.Refusal, '\0');
        }
    }
}

TEST(KindChange, LabelsAndReasonsGoAlong) {
    DataTable table;
    table.Cases = 3;
    table.Variables.push_back(VariableOf(ValueKind::Number, {"10", "", "2"}));
    table.Variables.push_back(VariableOf(ValueKind::Number, {"1", "2", "3"}));
    table.Weight = 1;
    table.Variables[0].Labels = {{2.0, {"two", ""}}, {10.0, {"ten", "many"}}, {11.0, {"nobody", ""}}};
    auto reasons = std::make_shared<MissingReasons>();
    reasons->Reasons = {{99.0, "", "Refused"}};
    reasons->Places = Column({0, 1, 0});
    table.Variables[0].Reasons = reasons;
    LabelEdits edits;
    edits.SetTexts(table, 0, 2.0, {"a pair", ""});
    edits.SetKind(table, 0, ValueKind::Text);
    EXPECT_EQ(edits.KindOf(table, 0), ValueKind::Text);
    EXPECT_THROW(edits.SetKind(table, 1, ValueKind::Text), DataError);
    const Variable texts = edits.Apply(table)->Variables[0];
    EXPECT_EQ(texts.Texts, (std::vector<std::string>{"10", "2"}));
    EXPECT_EQ(*texts.LabelOf(1), "ten");
    EXPECT_EQ(*texts.DescriptionOf(1), "many");
    EXPECT_EQ(*texts.LabelOf(2), "a pair");
    EXPECT_EQ(texts.Reasons->At(1)->Text, "99");
    const Variable numbers = OfKind(texts, ValueKind::Number);
    EXPECT_EQ(*numbers.LabelOf(10), "ten");
    EXPECT_EQ(numbers.Reasons->At(1)->Number, 99.0);
    edits.SetKind(table, 0, ValueKind::Number);
    edits.SetTexts(table, 0, 2.0, {"two", ""});
    EXPECT_TRUE(edits.IsEmpty());
}

}  // namespace
}  // namespace quillara
