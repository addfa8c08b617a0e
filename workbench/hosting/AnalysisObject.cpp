#include "workbench/hosting/AnalysisObject.h"

#include <array>
#include <new>

#include "host/AnalysisDialog.h"
#include "host/AnalysisSupport.h"
#include "platform/CountedPointer.h"
#include "workbench/documents/OpenDocuments.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/DocumentCollection.h"
#include "workbench/hosting/WindowObject.h"

namespace quillara {
namespace {

void Name(AnalysisObject& analysis, NamedCall& call) {
    call.Give(analysis.Document().Analysis().GetAnalysisName());
}

void Application(AnalysisObject& analysis, NamedCall& call) {
    static_cast<void>(analysis.Document());  // throws once it has closed
    call.Give(CountedPointer<IDispatch>::Adopt(OleAGetApplication()).Get());
}

CountedPointer<IDispatch> OutputsOf(const AnalysisObject& analysis) {
    Items items;
    for (ResultDocument* document : analysis.Document().Documents().OfAnalysis()) {
        items.push_back(CountedPointer<IDispatch>::Share(document));
    }
    return CollectionOf(std::move(items));
}

void Outputs(AnalysisObject& analysis, NamedCall& call) {
    call.Give(OutputsOf(analysis).Get());
}

void Dialog(AnalysisObject& analysis, NamedCall& call) {
    CAnalysisModelessDialog* dialog = analysis.Dialog();
    call.Give(QueryFor<IDispatch>(dialog == nullptr ? nullptr : dialog->GetUnknown()).Get());
}

void AutomationInteractive(AnalysisObject& analysis, NamedCall& call) {
    CAnalysisModelessDialog* dialog = analysis.Dialog();
    if (dialog == nullptr) {
        throw MemberRefusal{CO_E_OBJNOTCONNECTED};
    }
    if (call.Writes()) {
        dialog->AutomationInteractive = call.Boolean(0) ? 1 : 0;
    } else {
        call.Give(dialog->AutomationInteractive != 0);
    }
}

void DialogWindow(AnalysisObject& analysis, NamedCall& call) {
    if (analysis.Dialog() == nullptr) {
        throw MemberRefusal{CO_E_OBJNOTCONNECTED};
    }
    const auto own = CountedPointer<AnalysisObject>::Share(&analysis);
    call.Give(CountedPointer<IDispatch>::Adopt(new WindowObject(own)).Get());
}

template <auto Serve>
constexpr auto Of = RunFor<AnalysisObject, Serve>;

// clang-format off
constexpr std::array<MemberRow, 7> Members{{
    // Name                    Number Uses                 Arguments Value                  Run                        Help
    {u"Name",                  0,     DispatchPropertyGet, 0, 0,     VariantType::Text,     Of<Name>,                  "What the analysis is called"},
    {u"Application",           1,     DispatchPropertyGet, 0, 0,     VariantType::Dispatch, Of<Application>,           "The application"},
    {u"Parent",                2,     DispatchPropertyGet, 0, 0,     VariantType::Dispatch, Of<Application>,           "The application"},
    {u"Outputs",               3,     DispatchPropertyGet, 0, 0,     VariantType::Dispatch, Of<Outputs>,               "Its result documents, the newest last"},
    {u"Dialog",                4,     DispatchPropertyGet, 0, 0,     VariantType::Dispatch, Of<Dialog>,                "Its startup dialog; nothing once that has closed"},
    {u"AutomationInteractive", 5,     ReadAndWrite,        0, 0,     VariantType::Boolean,  Of<AutomationInteractive>, "Whether messages and dialogs are left to a person while a script drives it"},
    {u"DialogWindow",          6,     DispatchPropertyGet, 0, 0,     VariantType::Dispatch, Of<DialogWindow>,          "The window of its startup dialog, to work in as a person does"},
}};
// clang-format on

constexpr ObjectKind Kind{u"Analysis", "An analysis", IAnalysisAutomation::Id, Members};

}  // namespace

HRESULT AnalysisObject::QueryInterface(const GUID& id, void** object) {
    const bool answers = id == IUnknown::Id || id == IDispatch::Id || id == IAnalysisAutomation::Id;
    *object = answers ? static_cast<IAnalysisAutomation*>(this) : nullptr;
    return *object == nullptr ? E_NOINTERFACE : (AddRef(), S_OK);
}

HRESULT AnalysisObject::GetAnalysisOutputs(IDocumentCollection** outputs) try {
    *outputs = nullptr;
    *outputs = static_cast<IDocumentCollection*>(OutputsOf(*this).Detach());
    return S_OK;
} catch (const MemberRefusal& refusal) {
    return refusal.Status;
} catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
}

AnalysisDocument& AnalysisObject::Document() const {
    if (Open == nullptr) {
        throw MemberRefusal{CO_E_OBJNOTCONNECTED};
    }
    return *Open;
}

CAnalysisModelessDialog* AnalysisObject::Dialog() const {
    return Document().Analysis().GetStartupDialog();
}

const ObjectKind& AnalysisObject::MembersOf() const {
    return Kind;
}

}  // namespace quillara
