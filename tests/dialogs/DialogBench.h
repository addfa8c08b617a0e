#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "dialogs/DefineTask.h"
#include "engine/DrillDown.h"
#include "tests/Scripts.h"
#include "workbench/data/DataTable.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/windows/Window.h"

namespace dialogtest {

using namespace drilldown;

using Names = testing_scripts::Texts;

/// What a user does in a modal window that stands open. A window that is still open afterwards asks the next answer,
/// and is cancelled when there is none.
using Answer = std::function<void(quillara::Window&)>;

/// The startup dialog of the real module on the real host, over a small table.
class DialogBench {
  public:
    ~DialogBench();

    /// A new analysis of a table; its startup dialog stands open.
    void Open(quillara::DataTable table);

    // What a user does. Messages that a command posts have run when a verb is done.

    void Click(int id);
    void ClickText(int list, std::string_view row);
    /// Sends the dialog the command of a control, also of one that can't be clicked. Gives its result.
    std::int64_t Command(int id);
    /// Has the modal windows that open from now on answered in this order.
    void Expect(Answer answer) { Answers.push_back(std::move(answer)); }
    /// Forgets the answers that no window has asked for.
    void ForgetAnswers() { Answers.clear(); }

    // What is seen

    /// "a, [b] | c (1)": the rows of the two lists, the selected ones in brackets.
    std::string Lists();
    /// Calls of the dialog services since the last time.
    Names TakeCalls() { return std::exchange(Calls, {}); }
    std::function<void(std::string_view call)> OnCall;  ///< told of each of them
    /// Messages shown since the last time.
    Names TakeMessages() { return std::exchange(Messages, {}); }

    // What stands behind it

    quillara::AnalysisDocument& Host() { return *Document; }
    quillara::Window& Startup();
    CDrillDown& Analysis() { return static_cast<CDrillDown&>(Document->Analysis()); }
    CDefineTask& Dialog() { return static_cast<CDefineTask&>(*Analysis().GetStartupDialog()); }
    const quillara::DataTable& Table() const { return Data; }
    std::int16_t Number(const std::string& name) const { return static_cast<std::int16_t>(Data.IndexOf(name) + 1); }
    /// The record of a drill-down variable.
    Drill& Record(const std::string& name);

  private:
    bool WorkIn(quillara::Window& window);

    quillara::DataTable Data;
    std::unique_ptr<quillara::AnalysisDocument> Document;
    std::deque<Answer> Answers;
    Names Calls;
    Names Messages;
};

}  // namespace dialogtest
