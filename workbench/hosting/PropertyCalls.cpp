// How automation reads, writes and presses the controls of a dialog.

#include <cmath>
#include <functional>
#include <string>
#include <utility>

#include "host/AnalysisDialog.h"
#include "host/Exceptions.h"
#include "host/ScriptValues.h"
#include "platform/OwnedVariant.h"
#include "platform/WindowMessages.h"
#include "workbench/data/Errors.h"
#include "workbench/dialogs/VariableListsDialog.h"
#include "workbench/documents/WideText.h"
#include "workbench/hosting/ControlRows.h"
#include "workbench/hosting/ControlValues.h"
#include "workbench/hosting/DialogHost.h"
#include "workbench/hosting/ScriptPress.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/hosting/VariableNotation.h"
#include "workbench/windows/Window.h"

using quillara::Control;
using quillara::TwoLists;
using quillara::Window;

namespace {

constexpr char Disabled[] = "This control is disabled now.";

[[noreturn]] void Refuse(HRESULT status, std::string text) {
    throw new COleDispatchException(std::move(text), 0, status);
}

/// A control of an open window; null when there is none. Throws when the window has closed.
Control* Find(CAnalysisDialog& dialog, std::uint16_t id) {
    if (DialogHost::Of(dialog).IsClosed()) {
        throw new COleException(CO_E_OBJNOTCONNECTED);
    }
    return DialogHost::WindowOf(dialog)->Find(id);
}

/// Buttons of the control table stay within reach of scripts when they are hidden, though not when they are disabled.
void MustBeUsable(const CAnalysisDialog& dialog, const Control& control) {
    const ControlRow* row = quillara::RowOf(&dialog, control.Id);
    const bool mayBeHidden = row != nullptr && row->Mode == Acts;
    if (!control.Enabled || (!control.Visible && !mayBeHidden)) {
        Refuse(E_ACCESSDENIED, Disabled);
    }
}

/// Presses a button, a check box or a radio button.
quillara::PressRecord Press(CAnalysisDialog& dialog, Control& control, std::function<void(Window&)> firstAnswer = {}) {
    MustBeUsable(dialog, control);
    return quillara::ActForScript(
               dialog, [&control](Window& window) { return window.Press(control); }, std::move(firstAnswer))
        .Record;
}

// Writing

void WriteCheck(CAnalysisDialog& dialog, Control& control, bool checked) {
    if (control.Kind == ControlKind::RadioButton && !checked) {
        Refuse(E_INVALIDARG, "A radio button is switched off by another one.");
    }
    if (control.Checked == checked) {
        dialog.BeginOleAutomation();
    } else {
        Press(dialog, control);
    }
}

std::string RangeText(const Control& field) {
    std::string text =
        field.Kind == ControlKind::IntegerField ? "This field takes whole numbers" : "This field takes numbers";
    if (field.Range) {
        text +=
            " from " + quillara::NumberText(field.Range->Lowest) + " to " + quillara::NumberText(field.Range->Highest);
    }
    return text + ".";
}

void WriteNumber(CAnalysisDialog& dialog, Control& field, double number) {
    MustBeUsable(dialog, field);
    const bool isWhole = field.Kind != ControlKind::IntegerField || number == std::floor(number);
    const bool isWithin = !field.Range || (number >= field.Range->Lowest && number <= field.Range->Highest);
    if (!std::isfinite(number) || !isWhole || !isWithin) {
        Refuse(E_INVALIDARG, RangeText(field));
    }
    quillara::ActForScript(dialog, [&](Window& window) {
        window.TypeNumber(field.Id, number);
        return 0;
    });
}

/// Selects a row of a list, by its place from 0 or by its text.
void WriteRow(CAnalysisDialog& dialog, const Control& list, const VARIANT& value) {
    MustBeUsable(dialog, list);
    OwnedVariant place;
    const bool isText = value.Type == VariantType::Text;
    if (!isText && !Succeeded(VariantChangeType(*place.Put(), value, VariantType::Integer))) {
        Refuse(DISP_E_TYPEMISMATCH, "A list takes the place or the text of one of its rows.");
    }
    quillara::ActForScript(dialog, [&](Window& window) {
        isText ? window.ClickText(list.Id, quillara::NarrowText(ViewOf(value.Text)))
               : window.ClickRow(list.Id, place.Get().Integer);
        return 0;
    });
}

void WriteText(CAnalysisDialog& dialog, Control& edit, const std::string& text) {
    MustBeUsable(dialog, edit);
    quillara::ActForScript(dialog, [&](Window& window) {
        window.Type(edit.Id, text);
        return 0;
    });
}

/// The lists that a script writes for a button that opens the selection of variables.
TwoLists ListsMeant(const CAnalysisDialog& dialog, const VARIANT& value) {
    std::string text;
    if (!VariantToTextList(value, text)) {
        Refuse(DISP_E_TYPEMISMATCH, "Variables are named by a text, or by one or two lists of names and numbers.");
    }
    return quillara::ListsIn(quillara::TableOf(DialogHost::DocumentOf(dialog)).Table(), text);
}

/// Presses the button and answers its dialog. An empty choice cancels it, so that it isn't asked for again.
void WriteVariables(CAnalysisDialog& dialog, Control& button, const VARIANT& value) {
    const TwoLists lists = ListsMeant(dialog, value);
    const bool isEmpty = lists[0].empty() && lists[1].empty();
    bool isTaken = false;
    const quillara::PressRecord press = Press(dialog, button, [&](Window& window) {
        if (isEmpty) {
            window.SendCommand(CancelCommand);
            return;
        }
        quillara::ChooseVariables(window, lists[0], lists[1]);
        isTaken = window.CloseResult() == OkCommand;
    });
    if (!isTaken) {
        Refuse(isEmpty ? E_INVALIDARG : E_FAIL, isEmpty ? "Name at least one variable." : quillara::FailureOf(press));
    }
}

/// Writes a control by a value that can be converted to what it takes; a status when it can't.
HRESULT Write(CAnalysisDialog& dialog, Control& control, const VARIANT& value) {
    if (quillara::ChoosesVariables(&dialog, control.Id)) {
        WriteVariables(dialog, control, value);
        return S_OK;
    }
    if (control.IsList()) {
        WriteRow(dialog, control, value);
        return S_OK;
    }
    if (!control.IsEdit() && !control.IsNumberField() && !control.IsCheck()) {
        return DISP_E_TYPEMISMATCH;
    }
    OwnedVariant converted;
    const VariantType type = control.IsEdit()          ? VariantType::Text
                             : control.IsNumberField() ? VariantType::Real
                                                       : VariantType::Boolean;
    if (const HRESULT status = VariantChangeType(*converted.Put(), value, type); !Succeeded(status)) {
        return status;
    }
    if (control.IsEdit()) {
        WriteText(dialog, control, quillara::NarrowText(ViewOf(converted.Get().Text)));
    } else if (control.IsNumberField()) {
        WriteNumber(dialog, control, converted.Get().Real);
    } else {
        WriteCheck(dialog, control, converted.Get().Boolean != 0);
    }
    return S_OK;
}

HRESULT WriteTo(CAnalysisDialog& dialog, std::uint16_t id, const VARIANT& value) {
    Control* control = Find(dialog, id);
    try {
        return control == nullptr ? DISP_E_MEMBERNOTFOUND : Write(dialog, *control, value);
    } catch (const quillara::UsageError& error) {
        Refuse(E_INVALIDARG, error.what());
    }
}

// Reading

/// The value of a control as another type.
HRESULT ReadAs(CAnalysisDialog& dialog, std::uint16_t id, VariantType type, VARIANT& value) {
    const Control* control = Find(dialog, id);
    if (control == nullptr) {
        return DISP_E_MEMBERNOTFOUND;
    }
    OwnedVariant held = quillara::ValueOf(dialog, *control);
    if (held.Get().Type == VariantType::Text || held.Get().Type == VariantType::Empty) {
        return DISP_E_TYPEMISMATCH;  // captions aren't numbers, and neither is an empty field
    }
    return VariantChangeType(value, held.Get(), type);
}

}  // namespace

HRESULT CAnalysisDialogAutomationOptions::GetOleProperty(std::uint16_t control, VARIANT* value) {
    const Control* found = Find(Dialog, control);
    if (found == nullptr) {
        return DISP_E_MEMBERNOTFOUND;
    }
    *value = quillara::ValueOf(Dialog, *found).Detach();
    return S_OK;
}

HRESULT CAnalysisDialogAutomationOptions::GetOleProperty(std::uint16_t control, double* value) {
    VARIANT number;
    const HRESULT status = ReadAs(Dialog, control, VariantType::Real, number);
    *value = Succeeded(status) ? number.Real : 0.0;
    return status;
}

HRESULT CAnalysisDialogAutomationOptions::GetOleProperty(std::uint16_t control, BSTR* value) {
    const Control* found = Find(Dialog, control);
    *value = nullptr;
    if (found == nullptr) {
        return DISP_E_MEMBERNOTFOUND;
    }
    *value = SysAllocString(quillara::WideText(quillara::TextOf(Dialog, *found)));
    return *value == nullptr ? E_OUTOFMEMORY : S_OK;
}

HRESULT CAnalysisDialogAutomationOptions::GetOleProperty(std::uint16_t control, int* value) {
    VARIANT number;
    const HRESULT status = ReadAs(Dialog, control, VariantType::Integer, number);
    *value = Succeeded(status) ? number.Integer : 0;
    return status;
}

HRESULT CAnalysisDialogAutomationOptions::GetOleProperty(std::uint16_t control, IDispatch** value) {
    *value = nullptr;
    Control* button = Find(Dialog, control);
    if (button == nullptr || !button->IsButton()) {
        return DISP_E_MEMBERNOTFOUND;
    }
    *value = quillara::ResultOf(Press(Dialog, *button)).Detach();
    return S_OK;
}

HRESULT CAnalysisDialogAutomationOptions::SetOleProperty(std::uint16_t control) {
    Control* button = Find(Dialog, control);
    if (button == nullptr || !(button->IsButton() || button->IsCheck())) {
        return DISP_E_MEMBERNOTFOUND;
    }
    Press(Dialog, *button);
    return S_OK;
}

HRESULT CAnalysisDialogAutomationOptions::SetOleProperty(std::uint16_t control, double value) {
    return WriteTo(Dialog, control, OwnedVariant::OfReal(value).Get());
}

HRESULT CAnalysisDialogAutomationOptions::SetOleProperty(std::uint16_t control, const char16_t* value) {
    return WriteTo(Dialog, control, OwnedVariant::OfText(value == nullptr ? std::u16string_view() : value).Get());
}

HRESULT CAnalysisDialogAutomationOptions::SetOleProperty(std::uint16_t control, int value) {
    return WriteTo(Dialog, control, OwnedVariant::OfInteger(value).Get());
}

HRESULT CAnalysisDialogAutomationOptions::SetOleProperty(std::uint16_t control, const VARIANT& value) {
    return WriteTo(Dialog, control, value);
}

HRESULT CAnalysisDialogAutomationOptions::SetOleProperty(std::uint16_t control, IDispatch* /*value*/) {
    return Find(Dialog, control) == nullptr ? DISP_E_MEMBERNOTFOUND : DISP_E_TYPEMISMATCH;  // no control takes objects
}
