#include "workbench/hosting/ApplicationObject.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <new>
#include <string>
#include <vector>

#include "host/AnalysisDoc.h"
#include "platform/CountedPointer.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/CurrentAnalysis.h"
#include "workbench/hosting/DocumentCollection.h"
#include "workbench/hosting/ObjectModel.h"
#include "workbench/hosting/RoutedResults.h"
#include "workbench/hosting/ScriptDesk.h"
#include "workbench/hosting/WindowCalls.h"

namespace quillara {
namespace {

constexpr std::int32_t CommonWindow = 1;  // where results that don't stand alone go

/// The current analysis, or all when none is current.
std::vector<CAnalysisDoc*> AnalysesInView() {
    CAnalysisDoc* current = DocumentOfCurrentAnalysis();
    return current == nullptr ? OpenAnalyses() : std::vector{current};
}

Items GraphsInView() {
    std::vector<ResultDocument*> found;
    for (CAnalysisDoc* analysis : AnalysesInView()) {
        std::ranges::copy_if(ResultsOf(analysis).Documents.InWindows(), std::back_inserter(found),
                             [](const ResultDocument* document) { return document->Graph() != nullptr; });
    }
    std::ranges::sort(found, {}, &ResultDocument::Number);
    Items items;
    std::ranges::transform(found, std::back_inserter(items), &CountedPointer<IDispatch>::Share);
    return items;
}

CountedPointer<ResultDocument> LastRouted() {
    CountedPointer<ResultDocument> last;
    for (CAnalysisDoc* analysis : AnalysesInView()) {
        const auto& routed = ResultsOf(analysis).LastRouted;
        if (routed && (!last || last->Number() < routed->Number())) {
            last = routed;
        }
    }
    return last;
}

// Members

void Name(ApplicationObject& /*application*/, NamedCall& call) {
    call.Give(std::string("Quillara"));
}

void Analyses(ApplicationObject& /*application*/, NamedCall& call) {
    Items items;
    for (CAnalysisDoc* document : OpenAnalyses()) {
        IDispatch* analysis = nullptr;
        if (Succeeded(document->GetExternQlaAnalysisPointer(&analysis))) {
            items.push_back(CountedPointer<IDispatch>::Adopt(analysis));
        }
    }
    call.Give(CollectionOf(std::move(items)).Get());
}

void Graphs(ApplicationObject& /*application*/, NamedCall& call) {
    call.Give(CollectionOf(GraphsInView()).Get());
}

void ActiveItem(ApplicationObject& /*application*/, NamedCall& call) {
    call.Give(LastRouted().Get());
}

void Messages(ApplicationObject& /*application*/, NamedCall& call) {
    std::vector<std::string> texts;
    std::ranges::transform(TheScriptDesk().Messages(), std::back_inserter(texts), &DeskMessage::Text);
    call.Give(ListOf(texts));
}

void ClearMessages(ApplicationObject& /*application*/, NamedCall& /*call*/) {
    TheScriptDesk().ForgetMessages();
}

void Answer(ApplicationObject& /*application*/, NamedCall& call) {
    TheScriptDesk().Expect(AnswerOf(call.Value(0)));
}

void ClearAnswers(ApplicationObject& /*application*/, NamedCall& /*call*/) {
    TheScriptDesk().ForgetAnswers();
}

template <auto Serve>
constexpr auto Of = RunFor<ApplicationObject, Serve>;

// clang-format off
constexpr std::array<MemberRow, 8> Members{{
    // Name            Number Uses                 Arguments Value                  Run                Help
    {u"Name",          0,     DispatchPropertyGet, 0, 0,     VariantType::Text,     Of<Name>,          "What the application is called"},
    {u"Analyses",      1,     DispatchPropertyGet, 0, 0,     VariantType::Dispatch, Of<Analyses>,      "The analyses that are open"},
    {u"Graphs",        2,     DispatchPropertyGet, 0, 0,     VariantType::Dispatch, Of<Graphs>,        "The graphs in windows of their own"},
    {u"ActiveItem",    3,     DispatchPropertyGet, 0, 0,     VariantType::Dispatch, Of<ActiveItem>,    "The document that came last into the common window"},
    {u"Messages",      4,     DispatchPropertyGet, 0, 0,     VariantType::Variant,  Of<Messages>,      "The messages that analyses have for scripts, the newest last"},
    {u"ClearMessages", 5,     DispatchMethod,      0, 0,     VariantType::Empty,    Of<ClearMessages>, "Forgets these messages"},
    {u"Answer",        6,     DispatchMethod,      1, 1,     VariantType::Empty,    Of<Answer>,        "Answers the next dialog that opens by window calls: a list of lists of a name and arguments"},
    {u"ClearAnswers",  7,     DispatchMethod,      0, 0,     VariantType::Empty,    Of<ClearAnswers>,  "Forgets the answers that no dialog has asked for"},
}};
// clang-format on

constexpr ObjectKind Kind{u"Application", "The application", {}, Members};

}  // namespace

HRESULT ApplicationObject::QueryInterface(const GUID& id, void** object) {
    *object = id == IUnknown::Id || id == IDispatch::Id ? static_cast<IApplication*>(this) : nullptr;
    return *object == nullptr ? E_NOINTERFACE : (AddRef(), S_OK);
}

HRESULT ApplicationObject::GetGraphCollection(IDocumentCollection** graphs) try {
    *graphs = nullptr;
    *graphs = new DocumentCollection(GraphsInView());
    return S_OK;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

HRESULT ApplicationObject::GetResultPlacement(std::int32_t* placement) {
    *placement = CommonWindow;
    return S_OK;
}

HRESULT ApplicationObject::GetActiveItem(IDispatch** item) {
    *item = LastRouted().Detach();
    return S_OK;
}

const ObjectKind& ApplicationObject::MembersOf() const {
    return Kind;
}

}  // namespace quillara
