#include "workbench/hosting/WindowObject.h"

#include <array>
#include <string>
#include <utility>

#include "host/AnalysisDialog.h"
#include "workbench/hosting/ScriptDesk.h"
#include "workbench/hosting/ScriptPress.h"
#include "workbench/hosting/WindowCalls.h"

namespace quillara {
namespace {

CAnalysisModelessDialog& DialogOf(const WindowObject& window) {
    CAnalysisModelessDialog* dialog = window.Analysis().Dialog();
    if (dialog == nullptr) {
        throw MemberRefusal{CO_E_OBJNOTCONNECTED};
    }
    return *dialog;
}

/// Scripts that forget an answer hear of it: the dialog has only been cancelled.
void TellOfUnanswered(const PressRecord& press) {
    for (const std::string& title : press.Unanswered) {
        TheScriptDesk().Keep("The dialog \"" + title + "\" has opened and had no answer.");
    }
}

/// Gives what the call has made: nothing, a document or a collection of several.
void Run(const WindowObject& window, NamedCall& call, const char* name) {
    WindowCall wanted{name, {}};
    for (std::size_t i = 0; i < call.Count(); ++i) {
        wanted.Arguments.push_back(WindowArgument(call.Value(i)));
    }
    PressOutcome outcome = ActAsPerson(DialogOf(window), [&wanted](Window& shown) {
        RunWindowCall(shown, wanted);
        return 0;
    });
    TellOfUnanswered(outcome.Record);
    if (!outcome.Record.Documents.empty()) {
        call.Give(ResultOf(std::move(outcome.Record)).Get());
    }
}

void Click(WindowObject& window, NamedCall& call) {
    Run(window, call, "click");
}

void Select(WindowObject& window, NamedCall& call) {
    Run(window, call, "select");
}

void DoubleClick(WindowObject& window, NamedCall& call) {
    Run(window, call, "double_click");
}

void Text(WindowObject& window, NamedCall& call) {
    Run(window, call, "text");
}

void Drag(WindowObject& window, NamedCall& call) {
    Run(window, call, "drag");
}

void Close(WindowObject& window, NamedCall& call) {
    Run(window, call, "close");
}

void Command(WindowObject& window, NamedCall& call) {
    Run(window, call, "command");
}

template <auto Serve>
constexpr auto Of = RunFor<WindowObject, Serve>;

// clang-format off
constexpr std::array<MemberRow, 7> Members{{
    // Name          Number Uses            Arguments Value                 Run              Help
    {u"Click",       0,     DispatchMethod, 1, 1,     VariantType::Variant, Of<Click>,       "Clicks a button, a check box or a radio button, by its number"},
    {u"Select",      1,     DispatchMethod, 2, 2,     VariantType::Variant, Of<Select>,      "Clicks a row of a list, by place from 0 or by text"},
    {u"DoubleClick", 2,     DispatchMethod, 2, 2,     VariantType::Variant, Of<DoubleClick>, "Clicks a row of a list twice"},
    {u"Text",        3,     DispatchMethod, 2, 2,     VariantType::Variant, Of<Text>,        "Types into an edit or a number field"},
    {u"Drag",        4,     DispatchMethod, 3, 3,     VariantType::Variant, Of<Drag>,        "Drags a row of a list before another, both by place from 0"},
    {u"Close",       5,     DispatchMethod, 0, 0,     VariantType::Variant, Of<Close>,       "Closes the window as its cross does"},
    {u"Command",     6,     DispatchMethod, 1, 1,     VariantType::Variant, Of<Command>,     "Runs the command of a control, by its number, whether or not it can be used"},
}};
// clang-format on

constexpr ObjectKind Kind{u"DialogWindow",
                          "The window of a startup dialog, worked in as a person does; a call gives what it has made",
                          {},
                          Members};

}  // namespace

HRESULT WindowObject::QueryInterface(const GUID& id, void** object) {
    *object = id == IUnknown::Id || id == IDispatch::Id ? static_cast<IDispatch*>(this) : nullptr;
    return *object == nullptr ? E_NOINTERFACE : (AddRef(), S_OK);
}

const ObjectKind& WindowObject::MembersOf() const {
    return Kind;
}

}  // namespace quillara
