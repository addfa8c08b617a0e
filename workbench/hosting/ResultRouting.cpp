#include "workbench/hosting/ResultRouting.h"

#include <string>
#include <utility>

#include "host/AnalysisSupport.h"
#include "platform/WindowMessages.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/AnalysisState.h"

namespace quillara {
namespace {

DocumentOrigin NextOrigin(AnalysisState& state) {
    if (!state.Dialogs.Command) {
        return {0, state.Results.Documents.NextNumber()};
    }
    ActiveCommand& command = *state.Dialogs.Command;
    const bool isButton = command.Message == WindowMessage::Command;
    return {isButton ? CommandOf(command.CommandId) : 0, ++command.OutputIndex};
}

std::string TextOf(const DocumentOrigin& origin) {
    return std::to_string(origin.Command) + '.' + std::to_string(origin.Sequence);
}

}  // namespace

void RouteResult(CAnalysisSupport& analysis, AnalysisState& state, DocumentContent content) {
    const DocumentOrigin origin = NextOrigin(state);
    const auto document = ResultDocument::Create(std::move(content), origin, state.Results.Documents);
    state.Trace("Route " + TextOf(origin));
    auto forAnalysis = CountedPointer<IDispatch>::Share(document.Get());
    if (analysis.BeforeRouteOutput(forAnalysis.Get())) {
        forAnalysis.Detach();
        return;
    }
    state.Results.LastRouted = document;
    if (state.Services.TakeDocument) {
        state.Services.TakeDocument(*document);
    }
}

}  // namespace quillara

void CAnalysisSupport::SetResultSubject(ResultSubject subject) {
    quillara::StateOf(Document).Results.NextSubject = std::move(subject);
}

bool CAnalysisSupport::ReplaceContentOfDoc(IDispatch* old, IDispatch* fresh) {
    auto* target = quillara::ResultDocument::Of(old);
    auto* source = quillara::ResultDocument::Of(fresh);
    if (target == nullptr || source == nullptr) {
        return false;
    }
    quillara::StateOf(Document).Trace("Replace " + quillara::TextOf(target->Origin()));
    return target->TakeContentOf(*source);
}

ActiveCommand* CAnalysisSupport::GetActiveCommand() {
    std::optional<ActiveCommand>& command = quillara::StateOf(Document).Dialogs.Command;
    return command ? &*command : nullptr;
}

CAnalysisDoc* CAnalysisSupport::GetDocument() {
    return Document;
}
