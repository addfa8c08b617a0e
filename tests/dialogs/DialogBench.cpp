#include "tests/dialogs/DialogBench.h"

#include <stdexcept>

#include "resources/ControlIds.h"

namespace dialogtest {

DialogBench::~DialogBench() {
    Document.reset();
    EXPECT_TRUE(Answers.empty()) << Answers.size() << " answers left: no such window has opened";
}

void DialogBench::Open(quillara::DataTable table) {
    Document.reset();
    Data = std::move(table);
    Document = std::make_unique<quillara::AnalysisDocument>(Data);
    Document->Services.ShowMessage = [this](std::string_view text) { Messages.emplace_back(text); };
    Document->Services.Trace = [this](std::string_view call) {
        Calls.emplace_back(call);
        if (OnCall) {
            OnCall(call);
        }
    };
    Document->Services.WorkIn = [this](quillara::Window& window) { return WorkIn(window); };
    Document->Adopt(std::unique_ptr<CAnalysisSupport>(Orv6NewAnalysis()));
    ASSERT_TRUE(Document->RunSequence());
    ASSERT_NE(Document->StartupWindow(), nullptr);
    Calls.clear();
}

bool DialogBench::WorkIn(quillara::Window& window) {
    if (Answers.empty()) {
        return false;
    }
    const Answer answer = std::move(Answers.front());
    Answers.pop_front();
    answer(window);
    return true;
}

void DialogBench::Click(int id) {
    Startup().Click(id);
    Document->RunMessages();
}

void DialogBench::ClickText(int list, std::string_view row) {
    Startup().ClickText(list, row);
    Document->RunMessages();
}

std::int64_t DialogBench::Command(int id) {
    const std::int64_t result = Startup().SendCommand(id);
    Document->RunMessages();
    return result;
}

std::string DialogBench::Lists() {
    const auto rows = [this](int list) {
        const quillara::Control& control = Startup().At(list);
        Names texts = control.Rows;
        if (control.Selected >= 0) {
            std::string& selected = texts.at(static_cast<std::size_t>(control.Selected));
            selected = "[" + selected + "]";
        }
        return testing_scripts::Joined(texts, ", ");
    };
    return rows(DrillDownListControl) + " | " + rows(DrillUpListControl);
}

quillara::Window& DialogBench::Startup() {
    quillara::Window* window = Document->StartupWindow();
    if (window == nullptr) {
        throw std::runtime_error("the startup dialog isn't open");
    }
    return *window;
}

Drill& DialogBench::Record(const std::string& name) {
    Drill* record = CDrillDown::FindRecord(Analysis().DrillDowns, Number(name));
    if (record == nullptr) {
        throw std::runtime_error("no record of " + name);
    }
    return *record;
}

}  // namespace dialogtest
