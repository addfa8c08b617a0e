#include "workbench/hosting/ResultRouting.h"

#include <string>
#include <utility>

#include "host/AnalysisDoc.h"
#include "host/AnalysisSupport.h"
#include "platform/WindowMessages.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/RoutedResults.h"
#include "workbench/hosting/StepHistory.h"
#include "workbench/hosting/StepRecorder.h"
#include "workbench/hosting/Surroundings.h"

namespace quillara {
namespace {

DocumentOrigin NextOrigin(CAnalysisDoc* document) {
    std::optional<ActiveCommand>& running = DialogsOf(document).Command;
    if (!running) {
        return {0, ResultsOf(document).Documents.NextNumber()};
    }
    ActiveCommand& command = *running;
    const bool isButton = command.Message == WindowMessage::Command;
    return {isButton ? CommandOf(command.CommandId) : 0, ++command.OutputIndex};
}

/// A press that runs and a recorder get the document in which a result stands in the end; those of an update aren't
/// its own.
void TellOfDocument(CAnalysisDoc* owner, ResultDocument& document) {
    if (owner->UpdateCounter != 0) {
        return;
    }
    if (PressRecord* press = DialogsOf(owner).Script.Press) {
        press->Add(CountedPointer<IDispatch>::Share(&document));
    }
    if (StepRecorder* recorder = SurroundingsOf(owner).Services.Recorder) {
        recorder->RecordDocument(document);
    }
}

std::string NameOf(const DocumentOrigin& origin) {
    return std::to_string(origin.Command) + '.' + std::to_string(origin.Sequence);
}

}  // namespace

void RouteResult(CAnalysisSupport& analysis, DocumentContent content) {
    RoutedResults& results = ResultsOf(analysis.GetDocument());
    const Surroundings& around = SurroundingsOf(analysis.GetDocument());
    const DocumentOrigin origin = NextOrigin(analysis.GetDocument());
    const auto document = ResultDocument::Create(std::move(content), origin, results.Documents);
    around.Trace("Route " + NameOf(origin));
    auto forAnalysis = CountedPointer<IDispatch>::Share(document.Get());
    results.Replaced = {};
    const bool isTaken = analysis.BeforeRouteOutput(forAnalysis.Get());
    if (isTaken) {
        forAnalysis.Detach();
    }
    const auto replaced = std::exchange(results.Replaced, {});
    const auto standing = replaced ? replaced : document;
    standing->SetStep(static_cast<int>(StepsOf(analysis.GetDocument()).Taken().size()));
    TellOfDocument(analysis.GetDocument(), *standing);
    if (!isTaken) {
        results.LastRouted = document;
    }
    if (const auto& tell = isTaken ? around.Services.HearStandAlone : around.Services.TakeDocument) {
        tell(*standing);
    }
}

}  // namespace quillara

void CAnalysisSupport::SetResultSubject(ResultSubject subject) {
    quillara::ResultsOf(Document).NextSubject = std::move(subject);
}

bool CAnalysisSupport::ReplaceContentOfDoc(IDispatch* old, IDispatch* fresh) {
    auto* target = quillara::ResultDocument::Of(old);
    auto* source = quillara::ResultDocument::Of(fresh);
    if (target == nullptr || source == nullptr) {
        return false;
    }
    quillara::SurroundingsOf(Document).Trace("Replace " + quillara::NameOf(target->Origin()));
    if (!target->TakeContentOf(*source)) {
        return false;
    }
    quillara::ResultsOf(Document).Replaced = CountedPointer<quillara::ResultDocument>::Share(target);
    target->TellChange();
    return true;
}

ActiveCommand* CAnalysisSupport::GetActiveCommand() {
    std::optional<ActiveCommand>& command = quillara::DialogsOf(Document).Command;
    return command ? &*command : nullptr;
}

CAnalysisDoc* CAnalysisSupport::GetDocument() {
    return Document;
}
