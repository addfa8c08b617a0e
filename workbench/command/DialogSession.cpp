#include "workbench/command/DialogSession.h"

#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/hosting/AnalysisRemarks.h"

namespace quillara {
namespace {

constexpr const char* NoMemory = "There is not enough memory for this analysis.";

}  // namespace

DialogSession::DialogSession(const DataTable& table, CaseSettings settings, AnalysisServices services)
    : Library(AnalysisModule::DrillDownPath()), Document(table) {
    Document.SetSelection(std::move(settings.Selection));
    Document.SetWeight(settings.Weight);
    Document.SetThreads(static_cast<std::int32_t>(settings.Threads));
    Document.Services = std::move(services);
    Document.Services.MemoryLacked = [this] { LacksMemory = true; };
    Document.Services.WorkIn = [this](Window& dialog) { return WorkIn(dialog); };
    Notice(&Document, settings.Notices);
    Document.Adopt(Library.NewAnalysis());
    if (!Document.RunSequence() || Document.StartupWindow() == nullptr) {
        throw DataError(NoMemory);
    }
}

void DialogSession::Press(int id) {
    Act([id](Window& startup) { startup.Click(id); });
}

void DialogSession::Press(int id, const Answer& answer) {
    Act([id](Window& startup) { startup.Click(id); }, &answer);
    if (NextAnswer != nullptr) {
        throw DataError(NoMemory);  // the dialog hasn't been opened
    }
}

void DialogSession::Command(int id) {
    Act([id](Window& startup) { startup.SendCommand(id); });
}

void DialogSession::ClickRow(int list, int row) {
    Act([=](Window& startup) { startup.ClickRow(list, row); });
}

void DialogSession::TypeNumber(int field, double number) {
    Act([=](Window& startup) { startup.TypeNumber(field, number); });
}

const Control& DialogSession::At(int id) {
    return Document.StartupWindow()->At(id);
}

void DialogSession::Act(const std::function<void(Window&)>& action, const Answer* answer) {
    NextAnswer = answer;
    action(*Document.StartupWindow());
    Document.RunMessages();
    if (LacksMemory) {
        throw DataError(NoMemory);  // what has been read or made since isn't to be trusted
    }
}

bool DialogSession::WorkIn(Window& dialog) {
    const Answer* answer = std::exchange(NextAnswer, nullptr);
    if (answer == nullptr) {
        return false;
    }
    (*answer)(dialog);
    if (!dialog.IsClosed()) {
        throw DataError("The dialog " + Quoted(dialog.Resource().Title) + " doesn't accept what was entered.");
    }
    return true;
}

}  // namespace quillara
