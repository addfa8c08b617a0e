#include "workbench/data/MissingReasons.h"

#include <gtest/gtest.h>
#include "tests/workbench/formats/FormatsTesting.h"
#include "tests/workbench/formats/StatisticalMaker.h"
#include "workbench/data/CaseSelection.h"
#include "workbench/data/Errors.h"
#include "workbench/data/TableOfCases.h"
#include "workbench/data/ValidCodes.h"
#include "workbench/formats/Dictionary.h"

namespace quillara {
namespace {

/// "q [-inf..0] 97=Refused 99 | 1 97 - 99": declared ranges, reasons with labels, then what each case has.
std::string ShowMissing(const Variable& variable) {
    static const MissingReasons none;
    const MissingReasons& missing = variable.Reasons ? *variable.Reasons : none;
    std::ostringstream shown;
    shown << variable.Name;
    for (const MissingRange& range : missing.Ranges) {
        if (range.Lowest != range.Highest) {
            shown << " [" << range.Lowest << ".." << range.Highest << "]";
        }
    }
    for (const MissingReason& reason : missing.Reasons) {
        const bool isSpare = reason.Number && !missing.Declares(*reason.Number);
        shown << " " << CodeOfReason(variable, reason) << (reason.Label.empty() ? "" : "=" + reason.Label)
              << (isSpare ? " (not declared)" : "");
    }
    shown << " |";
    for (std::size_t row = 0; row < variable.Values.size(); ++row) {
        const MissingReason* reason = missing.At(row);
        const double value = variable.Values[row];
        shown << " "
              << (reason != nullptr && variable.IsMissing(value) ? "(" + CodeOfReason(variable, *reason) + ")"
                                                                 : Show(variable, value));
    }
    return shown.str();
}

std::string ShowMissing(const DataTable& table) {
    std::string shown;
    for (const Variable& variable : table.Variables) {
        shown += (shown.empty() ? "" : "; ") + ShowMissing(variable);
    }
    return shown;
}

constexpr double Day1900 = (141428 - 25567) * 86400.0;  // 1900-01-01 as sav counts

/// A survey with codes, ranges and labels of numbers and texts, and a date with a code.
DataTable Survey() {
    StatisticalMaker maker("sav");
    readstat_variable_t* number = maker.Number("q", {1, 98, 99, Missing, 97.5, 98});
    readstat_variable_add_missing_double_range(number, 97, 98);
    readstat_variable_add_missing_double_value(number, 99);
    readstat_label_set_t* labels = maker.Labels(number, READSTAT_TYPE_DOUBLE);
    readstat_label_double_value(labels, 1, "Yes");
    readstat_label_double_value(labels, 97, "Nobody");
    readstat_label_double_value(labels, 98, "Refused");
    readstat_label_double_value(labels, 99, std::string(130, 'l').c_str());
    readstat_variable_t* text = maker.Text("t", {"a", "XX", "", "YY", "b", "XX"});
    readstat_variable_add_missing_string_value(text, "XX");
    readstat_variable_add_missing_string_value(text, "YY");
    readstat_label_string_value(maker.Labels(text, READSTAT_TYPE_STRING), "XX", "No code");
    readstat_variable_add_missing_double_range(maker.Number("low", {-5, 0, 3, -Infinity, Missing, 1}), -Infinity, 0);
    readstat_variable_add_missing_double_value(maker.Number("day", {Day1900, 0, Day1900, 0, 0, 0}, "DATE11"), Day1900);
    readstat_variable_add_missing_double_value(maker.Number("unused", {1, 2, 3, 4, 5, 6}), 9);
    const TemporaryFolder folder;
    return ReadDataFile(folder.Put("t.sav", maker.Bytes()));
}

const std::string Long = "99=" + std::string(130, 'l');

const std::string SurveyShown =
    "q [97..98] 97=Nobody 97.5 98=Refused " + Long +
    " | 1=Yes (98) (99) - (97.5) (98); "
    "t XX=No code YY | a (XX) - (YY) b (XX); low [-inf..0] -5 0 | (-5) (0) 3 - - 1; "
    "day 1900-01-01 | (1900-01-01) 1582-10-14 (1900-01-01) 1582-10-14 1582-10-14 1582-10-14; unused 9 | 1 2 3 4 5 6";

DataTable Written(const DataTable& table, const std::string& extension, std::vector<std::string>* losses = nullptr) {
    const TemporaryFolder folder;
    const std::vector<std::string> lines = WriteDataFile(table, folder.Path("w." + extension));
    if (losses != nullptr) {
        *losses = lines;
    }
    return ReadDataFile(folder.Path("w." + extension));
}

TEST(MissingReasons, AreReadAndWrittenWithTheirLabelsWhole) {
    DataTable survey = Survey();
    survey.Variables[0].Labels[2].Label = "no case has it";
    // The maker's label is cut as it writes it.
    ASSERT_TRUE(LabelReason(survey.Variables[0], 99, std::string(130, 'l')));
    EXPECT_EQ(ShowMissing(survey), SurveyShown);
    for (const char* extension : {"sav", "zsav", "qtable"}) {
        std::vector<std::string> losses;
        EXPECT_EQ(ShowMissing(Written(survey, extension, &losses)), SurveyShown) << extension;
        EXPECT_TRUE(losses.empty());
    }
}

TEST(MissingReasons, AreReadFromPortableFiles) {
    StatisticalMaker maker("por");
    readstat_variable_t* number = maker.Number("Q", {1, 98, 99, Missing, -3});
    readstat_variable_add_missing_double_range(number, -Infinity, 0);
    readstat_variable_add_missing_double_value(number, 99);
    readstat_label_double_value(maker.Labels(number, READSTAT_TYPE_DOUBLE), 99, "Not stated");
    readstat_variable_add_missing_string_value(maker.Text("T", {"a", "XX", "", "b", "XX"}), "XX");
    const TemporaryFolder folder;
    EXPECT_EQ(ShowMissing(ReadDataFile(folder.Put("t.por", maker.Bytes()))),
              "Q [-inf..0] -3 99=Not stated | 1 98 (99) - (-3); T XX | a (XX) - b (XX)");
}

TEST(MissingReasons, MarksComeThroughDta) {
    StatisticalMaker maker("dta");
    readstat_label_set_t* labels = maker.Labels(maker.Number("n", {1, Missing, 2}), READSTAT_TYPE_INT32);
    readstat_label_tagged_value(labels, 'b', "Refused");
    const TemporaryFolder folder;
    DataTable table = ReadDataFile(folder.Put("t.dta", maker.Bytes()));
    EXPECT_EQ(ShowMissing(table), "n .b=Refused | 1 - 2");
    auto reasons = std::make_shared<MissingReasons>(*table.Variables[0].Reasons);
    reasons->Reasons.push_back({.Text = ".z"});
    ReasonPlaces places;
    for (const std::size_t place : {0U, 2U, 0U}) {
        places.Append(place);
    }
    reasons->Places = places.Finish(2);
    table.Variables[0].Reasons = reasons;
    EXPECT_EQ(ShowMissing(Written(table, "dta")), "n .b=Refused .z | 1 (.z) 2");
    EXPECT_EQ(ShowMissing(Written(table, "qtable")), "n .b=Refused .z | 1 (.z) 2");
}

TEST(MissingReasons, WhatAFormatHasNoRoomForIsSaid) {
    std::vector<std::string> losses;
    const DataTable dta = Written(Survey(), "dta", &losses);
    EXPECT_EQ(ShowMissing(dta).substr(0, 24), "q | 1=Yes - - - - -; t |");
    ASSERT_EQ(losses.size(), 4U);
    EXPECT_EQ(losses[1],
              "The missing values of \"t\" (XX \"No code\", YY) become blank fields in dta; sav and qtable keep them.");
    (void)Written(Survey(), "csv", &losses);
    EXPECT_EQ(losses.size(), 4U);
    DataTable marked = TableOf({Numbers("n", {Missing}), Texts("t", {std::nullopt})});
    MissingReasons reasons;
    reasons.Places = Column::OfCodes(std::vector<std::uint8_t>{1}, {0, 1});
    reasons.Reasons = {{.Text = ".a"}};
    marked.Variables[0].Reasons = std::make_shared<MissingReasons>(reasons);
    reasons.Reasons = {{.Text = "longer than 8"}};
    marked.Variables[1].Reasons = std::make_shared<MissingReasons>(reasons);
    EXPECT_EQ(ShowMissing(Written(marked, "sav", &losses)), "n | -; t | -");
    EXPECT_EQ(losses.size(), 2U);
    EXPECT_EQ(ShowMissing(Written(marked, "qtable")), "n .a | (.a); t longer than 8 | (longer than 8)");
}

TEST(MissingReasons, GoWithTheCasesAndAreAskedForInFormulas) {
    const DataTable survey = Survey();
    struct Asked {
        const char* Formula;
        const char* Shown;  ///< of q
    };
    // clang-format off
    constexpr Asked cases[] = {
        {"missing(q, 98)",                          "(98) (98)"},
        {"missing(q, 'Refused', 97.5)",             "(98) (97.5) (98)"},
        {"missing(q) and not missing(q, 98, 99)",   "- (97.5)"},
        {"missing(t, 'No code')",                   "(98) (98)"},
        {"missing(t, \"YY\") or missing(low, -5)",  "1=Yes -"},
        {"missing(day, '1900-01-01')",              "1=Yes (99)"},
        {"missing(unused, 9)",                      ""},
    };
    // clang-format on
    for (const auto& [formula, shown] : cases) {
        const DataTable taken = TableOfCases(survey, SelectCases(survey, formula));
        const std::string all = ShowMissing(taken.Variables[0]);
        EXPECT_EQ(all.substr(all.find('|') + 1), std::string(*shown == '\0' ? "" : " ") + shown) << formula;
        const std::string written = ShowMissing(Written(taken, "sav").Variables[0]);
        EXPECT_EQ(written.substr(written.find('|')), all.substr(all.find('|')));
    }
    for (const char* wrong :
         {"missing(q, 96)", "missing(q, 'Nothing')", "missing(q,)", "missing(q, a)", "missing(q 9)"}) {
        EXPECT_THROW((void)SelectCases(survey, wrong), UsageError) << wrong;
    }
    EXPECT_THROW((void)SelectCases(survey, "missing(nobody, 1)"), DataError);
}

TEST(MissingReasons, SomeMayBeTakenAsValues) {
    struct Taken {
        ValidCodes Valid;
        const char* Shown = "";
    };
    const Taken cases[] = {
        {{"q", {"98"}}, "q 97=Nobody 97.5 99 | 1=Yes 98=Refused (99) - (97.5) 98=Refused"},
        {{"q", {"Refused", "97.50"}}, "q 97=Nobody 99 | 1=Yes 98=Refused (99) - 97.5 98=Refused"},
        {{"q", {}}, "q | 1=Yes 98=Refused 99 - 97.5 98=Refused"},
        {{"t", {"No code"}}, "t YY | a XX=No code - (YY) b XX=No code"},
        {{"t", {}}, "t | a XX=No code - YY b XX=No code"},
        {{"low", {"0"}}, "low -5 | (-5) 0 3 - - 1"},
        {{"unused", {}}, "unused | 1 2 3 4 5 6"},
    };
    for (const auto& [valid, shown] : cases) {
        DataTable table = Survey();
        table.Variables[0].Labels.erase(99);
        (void)LabelReason(table.Variables[0], 99, "");
        TakeAsValid(table, valid);
        const Variable& variable = table.Variables[table.IndexOf(valid.Variable)];
        EXPECT_EQ(ShowMissing(variable), shown);
        EXPECT_EQ(ShowMissing(Written(table, "sav").Variables[table.IndexOf(valid.Variable)]), shown);
    }
    DataTable table = Survey();
    for (const ValidCodes& wrong : {ValidCodes{"q", {"96"}}, ValidCodes{"nobody"}, ValidCodes{"day", {"9"}}}) {
        EXPECT_THROW(TakeAsValid(table, wrong), DataError);
    }
}

TEST(MissingReasons, DictionariesLabelThem) {
    DataTable survey = Survey();
    const TemporaryFolder folder;
    ApplyDictionary(survey,
                    folder.Put("d.csv", "variable,value,label\nq,99,Gone\nq,97.25,Odd\nt,YY,Why\nlow,0,None\n"));
    EXPECT_EQ(ShowMissing(Written(survey, "sav")).substr(0, 62),
              "q [97..98] 97=Nobody 97.25=Odd 97.5 98=Refused 99=Gone | 1=Yes");
}

}  // namespace
}  // namespace quillara
