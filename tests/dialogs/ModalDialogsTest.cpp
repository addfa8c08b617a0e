// The category dialog and the boundaries dialog: what they show, what they take, and what a cancel leaves.

#include <gmock/gmock.h>

#include <array>
#include <sstream>

#include "dialogs/BoundariesDlg.h"
#include "dialogs/BoundaryList.h"
#include "dialogs/CategorySelectionDlg.h"
#include "tests/dialogs/DialogBench.h"

namespace dialogtest {

namespace {

using quillara::Missing;
using quillara::Window;

std::string Text(const std::optional<RowRange>& range) {
    std::ostringstream text;
    if (range && range->Lower == range->Upper) {
        text << " =" << range->Upper;
    } else if (range) {
        text << (range->HasLower ? " [" : " (") << range->Lower << ", " << range->Upper
             << (range->HasUpper ? "]" : ")");
    }
    return text.str();
}

/// "s: Category 120, Count 60; > one 2 =1; Missing 1": the variable, the columns with their widths, and the rows with
/// their values; ">" marks the selected row.
std::string Shown(Window& window) {
    const quillara::Control& list = window.At(CategoryListControl);
    EXPECT_EQ(list.ExtendedStyle, 33U);
    EXPECT_EQ(list.Colour, 0xff0000U);
    EXPECT_TRUE(window.At(CategoryVariableCaption).Colour.has_value());
    std::string text = window.At(CategoryVariableCaption).Text + ':';
    for (const quillara::ReportColumn& column : list.Columns) {
        text += ' ' + column.Heading + ' ' + std::to_string(column.Width);
    }
    for (std::size_t row = 0; row < list.ReportRows.size(); ++row) {
        text += list.Selected == static_cast<int>(row) ? "; >" : ";";
        for (const std::string& cell : list.ReportRows[row].Cells) {
            text += ' ' + cell;
        }
        text += Text(list.ReportRows[row].Range);
    }
    return text;
}

class ModalDialogs : public DialogTest {
  protected:
    ModalDialogs() {
        quillara::Variable s = quillara::Numbers("s", {1, 1, 2, Missing, 3});
        s.Labels[1] = {"one", ""};
        quillara::Variable t = quillara::Numbers("t", {1, 1, 2, 2, 2});
        t.Labels[2] = {"two", "the second of the values"};
        Open({s, t, quillara::Numbers("x", {1, 2, 3, 4, 5}), quillara::Numbers("w", {1, 2, 1, 1, 1})});
        Choose({"s", "t"}, {"x"});
    }
    /// Makes a variable the current one, with fresh counts.
    void Focus(const std::string& variable) {
        Analysis().SetCurrentDown(Number(variable));
        Analysis().ReadAfterDrill(0);
        Analysis().ReadBeforeDrill(0);
        Analysis().SetSelected(-1);
    }
    void Method(const std::string& variable, CategorizationMethod method) {
        Drill& record = Record(variable);
        record.Method = method;
        record.ExactCount = record.NeatCount = 3;
        record.StepSize = 2;
        record.UserInterv[0] = 3;
        record.NU = 1;
        record.RebuildCategories();
    }
    /// Opens a dialog for the current variable. Gives its result.
    template <typename Dialog>
    int Run(std::vector<Answer> answers = {}) {
        for (Answer& answer : answers) {
            Expect(std::move(answer));
        }
        return Dialog(Analysis()).DoModal(Analysis().GetLibInstance());
    }
    std::string Categories() {
        std::string text;
        Run<CategorySelectionDlg>({[&](Window& window) { text = Shown(window); }});
        return text;
    }
};

TEST_F(ModalDialogs, CategoriesAreShownWithTheirCounts) {
    Focus("s");
    EXPECT_EQ(Categories(), "s: Category 120 Count 60; > one 2 =1; 2 1 =2; 3 1 =3; Missing 1");
    Analysis().SetCountMD(0);
    EXPECT_EQ(Categories(), "s: Category 120 Count 60; > one 2 =1; 2 1 =2; 3 1 =3");
    Focus("t");
    EXPECT_EQ(Categories(), "t: Category 120 Count 60 Description 200; > 1 2 =1; two 3 the second of the values =2");
    Weigh("w");
    Focus("t");
    EXPECT_EQ(Categories(), "t: Category 120 Weight 60 Description 200; > 1 3 =1; two 3 the second of the values =2");
}

TEST_F(ModalDialogs, CountsLoseTheirTrailingZeros) {
    struct Case {
        double Count;
        const char* Shown;
    };
    const Case cases[] = {{100, "100"}, {0.5, "0.5"}, {1234567.25, "1234567.25"}, {2e-7, "0"}, {-30, "-30"}};
    for (const Case& each : cases) {
        Focus("t");
        Editable(*Record("t").CategorySet.begin()).Count = each.Count;
        EXPECT_THAT(Categories(), testing::HasSubstr(std::string("; > 1 ") + each.Shown + " =1;"));
    }
}

TEST_F(ModalDialogs, RowsStandForTheValuesThatAStepKeeps) {
    struct Case {
        CategorizationMethod Method;
        const char* Rows;
    };
    // clang-format off
    const Case cases[] = {
        {ExactIntervals,    "; > 0<x<=2 2 (0, 2]; 2<x<=4 2 (2, 4]; 4<x<=6 1 (4, 6]"},
        {NeatIntervals,     "; > 0<x<=2 2 (0, 2]; 2<x<=4 2 (2, 4]; 4<x<=6 1 (4, 6]"},
        {StepIntervals,     "; > 1<=x<3 2 [1, 3); 3<=x<5 2 [3, 5); 5<=x<7 1 [5, 7)"},
        {UserIntervals,     "; > x<=3 3 (1, 3]; 3<x 2 (3, 5]"},
        {IntegerCategories, "; > 1 1 =1; 2 1 =2; 3 1 =3; 4 1 =4; 5 1 =5"},
    };
    // clang-format on
    for (const Case& each : cases) {
        Method("x", each.Method);
        Focus("x");
        EXPECT_EQ(Categories(), std::string("x: Category 120 Count 60") + each.Rows);
    }
}

TEST_F(ModalDialogs, TheChosenRowIsTheOneSelected) {
    struct Case {
        const char* Name;
        Answer Does;
        int Result, Selected;
    };
    const auto doubleClick = [](Window& window) { window.DoubleClickRow(CategoryListControl, 2); };
    const auto click = [](Window& window) { window.ClickRow(CategoryListControl, 1); };
    const Case cases[] = {
        {"OK", Ok(), 1, 0},
        {"a row and OK", Category("2"), 1, 1},
        {"Missing", Category("Missing"), 1, 3},
        {"double", doubleClick, 1, 2},
        {"Cancel", Cancel(), 0, -1},
        {"closing", click, 0, -1},
    };
    for (const Case& each : cases) {
        Focus("s");
        EXPECT_EQ(Run<CategorySelectionDlg>({each.Does}), each.Result) << each.Name;
        EXPECT_EQ(Analysis().GetSelected(), each.Selected) << each.Name;
    }
}

TEST_F(ModalDialogs, WithoutARowOnlyCancelEndsTheCategories) {
    Focus("s");
    for (const ::Categories& category : Record("s").CategorySet) {
        Editable(category).Count = 0;
    }
    EXPECT_EQ(Categories(), "s: Category 120 Count 60; > Missing 1");
    Analysis().SetCountMD(0);
    bool asked = false;
    EXPECT_EQ(Run<CategorySelectionDlg>({Ok(), [&](Window&) { asked = true; }}), 0);
    EXPECT_TRUE(asked) << "OK leaves the dialog open";
    Host().FailAllocation(1);
    EXPECT_EQ(Categories(), "none:") << "without memory";
    Analysis().SetCurrentDown(-1);
    EXPECT_EQ(Categories(), "none: Category 120 Count 60") << "without a variable";
    EXPECT_EQ(Analysis().GetSelected(), -1);
}

std::string Numbers99(const char* more = "") {
    std::string text;
    for (int i = 0; i < 99; ++i) {
        text += std::to_string(i) + ' ';
    }
    return text + more;
}

TEST(BoundaryLists, AreReadUpToTheirFirstFault) {
    struct Case {
        std::string Text;
        BoundaryFault Fault;
        std::vector<double> Values;
    };
    // clang-format off
    const Case cases[] = {
        {"",               NotEnoughValues, {}},
        {"  ; ;",          NotEnoughValues, {}},
        {"7",              NoFault,         {7}},
        {"2  2.5  5",      NoFault,         {2, 2.5, 5}},
        {" ;-1e3;; 0 ;4 ", NoFault,         {-1000, 0, 4}},
        {"2 2",            FallingValues,   {2}},
        {"1 3 2 x",        FallingValues,   {1, 3}},
        {"1 x 0",          InvalidValue,    {1}},
        {"1\n2",           InvalidValue,    {}},
        {"1,2",            InvalidValue,    {}},
        {"1 inf",          InvalidValue,    {1}},
        {Numbers99("x"),   TooManyValues,   std::vector<double>(99)},
        {Numbers99(),      NoFault,         std::vector<double>(99)},
    };
    // clang-format on
    for (const Case& each : cases) {
        std::array<double, MostBoundaries> values{};
        const BoundaryListResult read = ReadBoundaryList(each.Text.c_str(), values);
        EXPECT_EQ(read.Fault, each.Fault) << each.Text;
        ASSERT_EQ(read.Count, each.Values.size()) << each.Text;
        for (std::size_t i = 0; i < each.Values.size(); ++i) {
            EXPECT_EQ(values[i], read.Count == MostBoundaries ? static_cast<double>(i) : each.Values[i]) << each.Text;
        }
    }
}

TEST_F(ModalDialogs, BoundariesAreStoredWhenTheyAreTaken) {
    struct Case {
        std::string Typed;
        int FailingCall;
        const char* Message;  ///< null: none
        std::vector<double> Stored;
    };
    // clang-format off
    const Case cases[] = {
        {"1 2",           1, nullptr,                                       {3}},
        {"1 2",           2, nullptr,                                       {3}},
        {Numbers99("99"), 0, "Too many values.",                            {3}},
        {"1 two",         0, "Invalid value (cannot be accepted).",         {3}},
        {"2 2",           0, "Lower boundary greater than upper boundary.", {3}},
        {"   ",           0, "Not enough values.",                          {3}},
        {"2;4",           0, nullptr,                                       {2, 4}},
    };
    // clang-format on
    Focus("x");
    Method("x", UserIntervals);
    const Drill& record = Record("x");
    std::string shown;
    const auto look = [&](Window& window) {
        EXPECT_TRUE(window.At(BoundariesVariableCaption).Colour.has_value());
        shown = window.At(BoundariesVariableCaption).Text + ": '" + window.At(BoundariesEdit).Text + "'";
    };
    for (const Case& each : cases) {
        Analysis().SetIsset(Number("x"), 1);
        Host().FailAllocation(each.FailingCall);
        const bool taken = each.Stored.size() == 2;
        std::vector<Answer> answers{look, Boundaries(each.Typed)};
        if (!taken) {
            answers.insert(answers.end(), {look, Cancel()});
        }
        EXPECT_EQ(Run<CBoundariesDlg>(answers), taken ? 1 : 0);
        EXPECT_EQ(shown, taken ? "x: ''" : "x: '" + each.Typed + "'") << "starts empty, stays open for correction";
        EXPECT_EQ(TakeMessages(), each.Message == nullptr ? Names{} : Names{each.Message});
        EXPECT_EQ(std::vector<double>(record.UserInterv.begin(), record.UserInterv.begin() + record.NU), each.Stored);
        EXPECT_EQ(record.Isset, taken ? 0 : 1);
    }
}

}  // namespace

}  // namespace dialogtest
