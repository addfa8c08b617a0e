#include "workbench/exploration/LabelEdits.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace quillara
