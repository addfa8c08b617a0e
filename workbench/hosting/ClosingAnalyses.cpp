#include "workbench/hosting/ClosingAnalyses.h"

#include <utility>
#include <vector>

#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/DialogState.h"

namespace quillara {
namespace {

std::vector<std::shared_ptr<void>>& Waiting() {
    static auto& waiting = *new std::vector<std::shared_ptr<void>>;
    return waiting;
}

}  // namespace

int ScriptAct::Running = 0;

ScriptAct::~ScriptAct() {
    if (--Running == 0) {
        const auto going = std::exchange(Waiting(), {});  // they go at the end of this scope; what goes may add others
    }
}

void LetGo(AnalysisDocument& document, std::shared_ptr<void> holder) {
    if (ScriptAct::Runs() || DialogsOf(&document).IsBusy()) {
        Waiting().push_back(std::move(holder));
        document.WithdrawFromScripts();
    }
}

}  // namespace quillara
