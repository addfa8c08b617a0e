#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dialogs/DefineTask.h"
#include "engine/DrillDown.h"
#include "resources/ControlIds.h"
#include "tests/workbench/Tables.h"
#include "workbench/data/DataTable.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/windows/Window.h"

namespace dialogtest {

using namespace drilldown;

using Names = std::vector<std::string>;

/// What a user does in a modal window that stands open. A window that is still open afterwards asks the next answer,
/// and is cancelled when there is none.
using Answer = std::function<void(quillara::Window&)>;

/// Presses a button of the window.
Answer Press(int id);
/// Takes the row of the category dialog with that text and confirms.
Answer Category(std::string name);
/// Types boundaries and confirms.
Answer Boundaries(std::string text);
inline Answer Ok() {
    return Press(1);
}
inline Answer Cancel() {
    return Press(2);
}

/// "s: Category 120 Count 60; > one 2 =1; Missing 1": the variable of the category dialog, the columns with their
/// widths, and the rows with their values; ">" marks the selected row.
std::string CategoriesIn(quillara::Window& window);

/// The startup dialog of the real module on the real host, over a small table: what a user does, and what is seen then
/// as short texts.
class DialogBench {
  public:
    ~DialogBench();

    /// A new analysis of a table; its startup dialog stands open.
    void Open(quillara::DataTable table);
    void Open(std::vector<quillara::Variable> variables) { Open(quillara::TableOf(std::move(variables))); }

    // What a user does. Messages that a command posts have run when a verb is done.

    /// Has the modal windows that open from now on answered in this order.
    void Expect(Answer answer) { Answers.push_back(std::move(answer)); }
    /// Forgets the answers that no window has asked for.
    void ForgetAnswers() { Answers.clear(); }
    void Click(int id);
    /// Clicks a button and answers the modal windows that it opens.
    void Click(int id, std::vector<Answer> answers);
    /// Clicks a row of the drill-down list, by the variable's name, or of the drill-up list, by its whole text.
    void Pick(std::string_view variable);
    void PickUp(std::string_view row);
    void TypeNumber(int id, double number);
    /// Fills the dialog of two variable lists and confirms.
    Answer Variables(const Names& categorical, const Names& continuous = {});
    /// Chooses the drill variables, categorical and continuous, or the review variables.
    void Choose(const Names& categorical, const Names& continuous = {}) {
        Click(DrillVariablesButton, {Variables(categorical, continuous)});
    }
    void Review(const Names& categorical, const Names& continuous = {}) {
        Click(ReviewVariablesButton, {Variables(categorical, continuous)});
    }
    /// A whole step down on the category of that name, and a step back on a row of the drill-up list.
    void Down(std::string_view variable, const std::string& category);
    void Up(std::string_view row);
    /// Defines the weight variable and switches the weights on.
    void Weigh(const std::string& name);
    /// Makes a variable the current one, with fresh counts.
    void Focus(const std::string& variable);
    /// Sends the dialog the command of a control, also of one that can't be clicked. Gives its result.
    std::int64_t Command(int id);

    // What is seen

    /// "a, [b] | c (1)": the rows of the two lists, the selected ones in brackets.
    std::string Lists();
    /// The Categorization page. "neat of 6 | 10 [12] 1 0 | -": the checked method and how many can be chosen; the
    /// fields of the exact and neat numbers, step size and start, in brackets those that take entries; and "at minimum"
    /// as "yes", "no" or, greyed, "-", with "boundaries" behind it where that button can be pressed.
    std::string Page();
    /// The ids of some controls that are enabled, or checked, in the order asked.
    std::string Enabled(const std::vector<int>& ids);
    std::string Checked(const std::vector<int>& ids);
    std::string TextOf(int id) { return Startup().At(id).Text; }
    /// Calls of the dialog services since the last time, one "; " apart.
    std::string TakeTrace();
    std::function<void(std::string_view call)> OnCall;  ///< told of each of them
    /// Messages shown since the last call.
    Names TakeMessages() { return std::exchange(Messages, {}); }

    // What stands behind it

    quillara::AnalysisDocument& Host() { return *Document; }
    quillara::Window& Startup();
    CDrillDown& Analysis() { return static_cast<CDrillDown&>(Document->Analysis()); }
    CDefineTask& Dialog();
    std::int16_t Number(const std::string& name) const { return static_cast<std::int16_t>(Data.IndexOf(name) + 1); }
    /// The record of a drill-down variable.
    Drill& Record(const std::string& name);

  private:
    bool WorkIn(quillara::Window& window);
    std::vector<short> Numbers(const Names& names) const;
    std::string Rows(int list);
    std::string Field(int id);

    quillara::DataTable Data;
    std::unique_ptr<quillara::AnalysisDocument> Document;
    std::deque<Answer> Answers;
    Names Calls;
    Names Messages;
};

class DialogTest : public testing::Test, public DialogBench {};

}  // namespace dialogtest
