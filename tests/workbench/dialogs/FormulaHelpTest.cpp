// What helps a person to write a selection formula and to find a variable.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <condition_variable>

#include "tests/workbench/Tables.h"
#include "workbench/data/CaseSelection.h"
#include "workbench/dialogs/FormulaCompletion.h"
#include "workbench/dialogs/SelectionExamples.h"
#include "workbench/dialogs/SelectionPreview.h"
#include "workbench/dialogs/VariableSearch.h"

namespace quillara {
namespace {

DataTable People() {
    DataTable table = TableOf({Numbers("age", {20, 30, 40}), Texts("sex", {"Male", "Female", "Male"}),
                               Numbers("marital status", {1, 2, 1}), Numbers("And", {1, 2, 3})});
    table.Variables[0].LongName = "Age in years";
    table.Variables[2].LongName = "State of marriage";
    table.Variables[2].Labels = {{1, {"Married", ""}}, {2, {"Not \"yet\" married", ""}}};
    return table;
}

TEST(FormulaHelp, OffersNamesAndLabelsWhereTheyCanStand) {
    const DataTable people = People();
    const struct {
        const char* Typed;  // up to the place
        std::size_t From;
        const char* Offers;
    } places[] = {
        {"a", 0, "age [And] "},
        {"AG", 0, "age "},
        {"age > 3 and s", 12, "sex [marital status] "},  // by a word of its label too
        {"ye", 0, "age "},
        {"x", 0, ""},
        {"[mar", 0, "[marital status] "},
        {"sex = ", 6, "\"Female\" \"Male\" "},
        {"sex <>'m", 6, "'Male' "},
        {"sex in (\"Male\", \"f", 16, "\"Female\" "},
        {"sex not in (", 12, "\"Female\" \"Male\" "},
        {"[marital status]=\"", 17, "\"Married\" 'Not \"yet\" married' "},
        {"age = \"", 6, ""},
        {"age = 'a' and ", 14, "age sex [marital status] [And] "},
    };
    for (const auto& [typed, from, text] : places) {
        const FormulaOffers offers = OffersAt(people, typed, std::string_view(typed).size());
        std::string offered;
        for (const FormulaOffer& offer : offers.Offers) {
            offered += offer.Text + " ";
        }
        EXPECT_EQ(offered, text) << typed;
        EXPECT_EQ(offers.From, from) << typed;
    }
    EXPECT_EQ(OffersAt(people, "", 0, 2).Offers.size(), 2U);
    EXPECT_EQ(OffersAt(people, "ag or", 2).Offers.front().Hint, "Age in years");
}

TEST(FormulaHelp, ExamplesAreOfTheTableAndSelectSomeOfItsCases) {
    const DataTable visits = TableOf({Texts("who", {"Ann", "Bo", "Cy", "Di"}), Texts("sex", {"m", "f", "m", "m"}),
                                      Numbers("first visit", {19723, 19724, Missing, 19730}, ValueKind::Date),
                                      Numbers("x", {Missing, Missing, Missing, Missing})});
    const struct {
        DataTable Table;
        std::vector<std::string> Examples;
    } tables[] = {
        {People(), {"age > 30 and sex = \"Male\""}},
        {visits, {"[first visit] > \"2024-01-02\" and sex = \"m\"", "not missing([first visit])"}},
        {TableOf({Numbers("share", {0.123456, 0.5172, 0.9, Missing})}), {"share > 0.52", "not missing(share)"}},
        {TableOf({Numbers("same", {7, 7, 7})}), {}},
        {TableOf({Numbers("n", {1234.5, 1234.6})}), {"n > 1234.5"}},
    };
    for (const auto& [table, examples] : tables) {
        EXPECT_EQ(SelectionExamples(table), examples);
        for (const std::string& example : SelectionExamples(table)) {
            const std::vector<CaseResult> results = SelectCases(table, example);
            EXPECT_THAT(results, testing::Contains(CaseResult::Use)) << example;
            EXPECT_THAT(results, testing::Contains(CaseResult::Skip)) << example;
        }
    }
}

TEST(FormulaHelp, OutcomesTellTheCasesOrThePlaceOfTheFault) {
    const DataTable people = People();
    const struct {
        const char* Formula = nullptr;
        const char* Text = nullptr;
        std::optional<std::size_t> Place;
    } outcomes[] = {
        {"age > 20", "2 of 3 cases are selected", std::nullopt},
        {"age = 20", "1 of 3 cases is selected", std::nullopt},
        {" \n", "Write a condition: a variable, a comparison and a value.", std::nullopt},
        {"age > ", "can't be read at character 7", 6},
        {"age ? 3", "can't be read at character 5", 4},
        {"age > 3 and agee = 1", "\"agee\"", 12},
    };
    for (const auto& [formula, text, place] : outcomes) {
        const SelectionOutcome outcome = OutcomeOf(people, formula);
        EXPECT_THAT(outcome.Text(people.Cases), testing::HasSubstr(text)) << formula;
        EXPECT_EQ(outcome.Place, place) << formula;
    }
    EXPECT_EQ((SelectionOutcome{"", 1234567, "", {}}.Text(123456)), "1234567 of 123456 cases are selected");
}

TEST(FormulaHelp, OnlyTheLastFormulaOfAHastyPersonIsAnswered) {
    const DataTable people = People();
    std::mutex guard;
    std::condition_variable told;
    int ready = 0;
    SelectionPreview preview(people, [&] {
        const std::scoped_lock lock(guard);
        ++ready;
        told.notify_one();
    });
    for (const char* formula : {"age", "age > ", "age > 20"}) {
        preview.Ask(formula);
    }
    std::optional<SelectionOutcome> outcome;
    std::unique_lock lock(guard);
    while (!outcome) {
        told.wait(lock, [&] { return ready > 0; });
        ready = 0;
        outcome = preview.Take();
    }
    EXPECT_EQ(outcome->Formula, "age > 20");
    EXPECT_EQ(outcome->Selected, 2);
    EXPECT_FALSE(preview.Take());
    preview.Ask("age = 30");  // it ends while this is being worked out, or before
}

TEST(FormulaHelp, VariablesAreFoundByWordsOfTheirNamesAndLabels) {
    const ReportRow row{{"income_2024", "number", "Net household INCOME, \u00c4rzte"}, std::nullopt};
    for (const char* found : {"", "  ", "income", "HOUSE 2024", "\u00e4rzte", "number net"}) {
        EXPECT_TRUE(AnswersSearch(row, found)) << found;
    }
    for (const char* missed : {"incomes", "net gross"}) {
        EXPECT_FALSE(AnswersSearch(row, missed)) << missed;
    }
}

}  // namespace
}  // namespace quillara
