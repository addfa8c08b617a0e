#include "workbench/hosting/ResultRouting.h"

#include <string>
#include <utility>

#include "host/AnalysisSupport.h"
#include "platform/WindowMessages.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/RoutedResults.h"
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

std::string TextOf(const DocumentOrigin& origin) {
    return std::to_string(origin.Command) + '.' + std::to_string(origin.Sequence);
}

}  // namespace

void RouteResult(CAnalysisSupport& analysis, DocumentContent content) {
    RoutedResults& results = ResultsOf(analysis.GetDocument());
    const Surroundings& around = SurroundingsOf(analysis.GetDocument());
    const DocumentOrigin origin = NextOrigin(analysis.GetDocument());
    const auto document = ResultDocument::Create(std::move(content), origin, results.Documents);
    around.Trace("Route " + TextOf(origin));
    auto forAnalysis = CountedPointer<IDispatch>::Share(document.Get());
    if (analysis.BeforeRouteOutput(forAnalysis.Get())) {
        forAnalysis.Detach();
        return;
    }
    results.LastRouted = document;
    if (around.Services.TakeDocument) {
        around.Services.TakeDocument(*document);
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
    quillara::SurroundingsOf(Document).Trace("Replace " + quillara::TextOf(target->Origin()));
    return target->TakeContentOf(*source);
}

ActiveCommand* CAnalysisSupport::GetActiveCommand() {
    std::optional<ActiveCommand>& command = quillara::DialogsOf(Document).Command;
    return command ? &*command : nullptr;
}

CAnalysisDoc* CAnalysisSupport::GetDocument() {
    return Document;
}
