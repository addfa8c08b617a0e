// The Categorization page: what clicks show, and when and where they are stored.

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>

#include "platform/WindowMessages.h"
#include "tests/dialogs/DialogBench.h"

namespace dialogtest {
namespace {

class CategorizationPageTest : public DialogTest {
  protected:
    void SetUp() override {
        Open({quillara::Numbers("sex", {1, 2, 1, 2, 1}), quillara::Numbers("age", {1, 2, 3, 4, 5}),
              quillara::Numbers("pay", {10, 20, 30, 40, 50})});
        Choose({"sex"}, {"age", "pay"});
        Pick("age");
    }
    /// Method, ExactCount, NeatCount, StepSize, StepStart and StartAtMin of a record.
    std::string Stored(const std::string& name) {
        const Drill& record = Record(name);
        std::ostringstream text;
        text << record.Method << ": " << record.ExactCount << ' ' << record.NeatCount << ' ' << record.StepSize << ' '
             << record.StepStart << ' ' << record.StartAtMin;
        return text.str();
    }
};

constexpr char FreshPage[] = "neat of 6 | 10 [10] 1 0 | -";
constexpr char FreshRecord[] = "2: 10 10 1 0 1";

TEST_F(CategorizationPageTest, ChoicesAreStoredByDownAndByAnotherRowAndLostByClosing) {
    const struct {
        int Radio;
        int Field;  // 0: none
        double Value;
        const char* Clicked;
        const char* Stored;
        const char* Shown;
    } cases[] = {
        // clang-format off
        {9064, 0,    0,    "all of 6 | 10 10 1 0 | -",             "0: 0 0 0 0 0",   "all of 6 | 10 10 1 0 | -"},
        {9065, 9070, 7,    "exact of 6 | [7] 10 1 0 | -",          "1: 7 7 0 0 0",   "exact of 6 | [7] 10 1 0 | -"},
        {9065, 9070, 1,    "exact of 6 | [2] 10 1 0 | -",          "1: 2 2 0 0 0",   "exact of 6 | [2] 10 1 0 | -"},
        {9066, 9071, 5000, "neat of 6 | 10 [999] 1 0 | -",         "2: 999 999 0 0 0", "neat of 6 | 10 [999] 1 0 | -"},
        {9067, 9072, 2.5,  "step of 6 | 10 10 [2.5] 0 | yes",      "3: 0 0 2.5 0 1", "step of 6 | 10 10 [2.5] 0 | yes"},
        {9067, 9072, 0,    "step of 6 | 10 10 [0] 0 | yes",        "3: 0 0 0 0 1",   "step of 6 | 10 10 [0] 0 | yes"},
        {9068, 0,    0,    "integer of 6 | 10 10 1 0 | -",         "4: 0 0 0 0 0",   "integer of 6 | 10 10 1 0 | -"},
        {9069, 0,    0,    "user of 6 | 10 10 1 0 | - boundaries", "5: 0 0 0 0 0",   "user of 6 | 10 10 1 0 | - boundaries"},
        // clang-format on
    };
    for (const auto& row : cases) {
        for (const char* ending : {"row", "down", "close"}) {
            SetUp();
            Click(row.Radio);
            if (row.Field != 0) {
                TypeNumber(row.Field, row.Value);
            }
            EXPECT_EQ(Page(), row.Clicked);
            EXPECT_EQ(Stored("age"), FreshRecord);
            if (ending == std::string("close")) {
                Click(CancelCommand);
                EXPECT_EQ(Stored("age"), FreshRecord);
                continue;
            }
            if (ending == std::string("row")) {
                Pick("pay");
                EXPECT_EQ(Page(), FreshPage);
            } else {
                Click(DownButton, {row.Radio == UserIntervalsRadio ? Boundaries("2 4") : Cancel()});
            }
            EXPECT_EQ(Stored("age"), row.Stored) << ending;
            EXPECT_EQ(Stored("pay"), FreshRecord);
            Pick("age");
            EXPECT_EQ(Page(), row.Shown);
        }
    }
}

TEST_F(CategorizationPageTest, ButtonsOfDrillDownResultsStoreThePageAndOthersDoNot) {
    const struct {
        int Button;
        bool Stores;
        int Documents;
    } cases[] = {{9058, true, 0},  {9059, true, 1},  {9060, true, 3},
                 {9081, false, 1}, {9082, false, 2}, {9086, false, 0}};
    for (const auto& row : cases) {
        SetUp();
        Review({"sex"}, {"pay"});
        int documents = 0;
        Host().Services.TakeDocument = [&](quillara::ResultDocument&) { ++documents; };
        Click(IntegerCategoriesRadio);
        EXPECT_EQ(Command(row.Button), 0);
        EXPECT_EQ(Record("age").Method == IntegerCategories, row.Stores) << row.Button;
        EXPECT_EQ(documents, row.Documents) << row.Button;
    }
}

TEST_F(CategorizationPageTest, AClickOnTheChosenMethodDropsWhatWasTyped) {
    Click(ExactIntervalsRadio);
    TypeNumber(ExactCountField, 7);
    Pick("pay");
    Pick("age");
    EXPECT_EQ(Page(), "exact of 6 | [7] 10 1 0 | -");
    Click(ExactIntervalsRadio);
    EXPECT_EQ(Page(), "exact of 6 | [10] 10 1 0 | -");
}

TEST_F(CategorizationPageTest, StepsStartAtTheMinimumOrAtAGivenValue) {
    Click(StepIntervalsRadio);
    Click(StartAtMinimumBox);
    EXPECT_EQ(Page(), "step of 6 | 10 10 [1] [0] | no");
    TypeNumber(StepStartField, -2);
    Pick("pay");
    Pick("age");
    EXPECT_EQ(Stored("age") + "; " + Page(), "3: 0 0 1 -2 0; step of 6 | 10 10 [1] [-2] | no");
    TakeTrace();
    Click(StartAtMinimumBox);
    EXPECT_EQ(Page() + TakeTrace(), "step of 6 | 10 10 [1] -2 | yes");  // and no pass
    Pick("pay");
    EXPECT_EQ(Stored("age"), "3: 0 0 1 -2 1");
}

TEST_F(CategorizationPageTest, WhatIsAlreadyStoredCountsAsUnchanged) {
    const struct {
        int Radio;
        int Field;
        double Another;  // makes it a change
    } cases[] = {
        {9064, 0, 0},    {9065, 9070, 11}, {9066, 9071, 11}, {9067, 9072, 1.5},
        {9067, 9073, 1}, {9068, 0, 0},     {9069, 0, 0},
    };
    for (const auto& [radio, field, another] : cases) {
        SetUp();
        Click(radio);
        if (field == StepStartField) {
            Click(StartAtMinimumBox);
        }
        Pick("age");
        Analysis().DataChanged = 0;
        Pick("age");
        EXPECT_EQ(Analysis().DataChanged, 0) << radio;
        if (field != 0) {
            TypeNumber(field, another);
            Pick("age");
            EXPECT_EQ(Analysis().DataChanged, 1) << field;
        }
    }
}

TEST_F(CategorizationPageTest, AFieldWithoutANumberLeavesTheValueOfTheRecord) {
    Click(ExactIntervalsRadio);
    TypeNumber(ExactCountField, 7);
    Pick("age");
    Click(NeatIntervalsRadio);
    Startup().At(NeatCountField).HasNumber = false;
    Pick("age");
    EXPECT_EQ(Stored("age"), "2: 7 7 0 0 0");
}

TEST_F(CategorizationPageTest, ACategoricalVariableHasNoChoice) {
    Pick("sex");
    EXPECT_EQ(Page(), "all of 1 | 10 10 1 0 | -");
    EXPECT_EQ(Enabled({9079, 9064, 9065}), "9079 9064");
    Command(IntegerCategoriesRadio);
    Pick("age");
    EXPECT_EQ(Record("sex").Method, DistinctValues);
    Record("sex").Method = NeatIntervals;  // as the limit of distinct values leaves it
    Pick("sex");
    EXPECT_EQ(Page(), "neat of 1 | 10 [10] 1 0 | -");
    TypeNumber(NeatCountField, 20);
    Pick("age");
    EXPECT_EQ(Record("sex").NeatCount, 10);
}

TEST_F(CategorizationPageTest, WithoutACurrentVariableNoMethodIsShown) {
    Choose({}, {"pay"});
    EXPECT_EQ(Page() + Enabled({9079}), "none of 6 | 10 10 1 0 | -");
    Click(IntegerCategoriesRadio);
    Pick("pay");  // the choice was nobody's
    EXPECT_EQ(Stored("pay"), FreshRecord);
    Open({quillara::Numbers("age", {1, 2})});
    EXPECT_EQ(Page() + Enabled({9079}), "none of 0 | 10 10 1 0 | -");
}

TEST_F(CategorizationPageTest, BoundariesAreStoredWhenTheyAreAccepted) {
    Click(UserIntervalsRadio);
    Click(BoundariesButton, {Cancel()});
    EXPECT_EQ(Page(), FreshPage);
    Click(UserIntervalsRadio);
    Click(BoundariesButton, {Boundaries("2 4")});
    EXPECT_EQ(Stored("age") + "; " + Page(), "5: 0 0 0 0 0; user of 6 | 10 10 1 0 | - boundaries");
    EXPECT_EQ(Record("age").CategorySet.size(), 3U);
    Analysis().DataChanged = 0;
    Analysis().SetAllIsset(1);
    Click(BoundariesButton, {Boundaries("3")});  // unchanged but for the boundaries, which make the counts stale
    EXPECT_EQ(std::pair(int{Analysis().DataChanged}, int{Record("age").Isset}), std::pair(0, 0));
    EXPECT_EQ(Record("age").NU, 1);
    Click(DownButton, {Cancel()});
    EXPECT_EQ(Record("age").CategorySet.size(), 3U);  // a recount, which goes by the old ones
    Analysis().ReadAfterDrill(0);
    EXPECT_EQ(Record("age").CategorySet.size(), 2U);
}

}  // namespace
}  // namespace dialogtest
