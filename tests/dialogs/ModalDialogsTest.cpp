// The category dialog and the boundaries dialog: what they show, what they take, and what a cancel leaves.

#include <gmock/gmock.h>

#include <array>

#include "dialogs/BoundariesDlg.h"
#include "dialogs/BoundaryList.h"
#include "dialogs/CategorySelectionDlg.h"
#include "tests/dialogs/DialogBench.h"

namespace dialogtest {

namespace {

using quillara::Missing;
using quillara::Window;

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
        Run<CategorySelectionDlg>({[&](Window& window) { text = CategoriesIn(window); }});
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

TEST_F(ModalDialogs, WithoutARowOkLeavesTheCategoriesOpen) {
    Focus("s");
    for (const ::Categories& category : Record("s").CategorySet) {
        Editable(category).Count = 0;
    }
    Analysis().SetCountMD(0);
    bool asked = false;
    EXPECT_EQ(Run<CategorySelectionDlg>({Ok(), [&](Window&) { asked = true; }}), 0);
    EXPECT_TRUE(asked);
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
    Drill& record = Record("x");
    record.UserInterv[0] = 3;
    record.NU = 1;
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
