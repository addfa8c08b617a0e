// What dialogs do with their controls.

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/AnalysisSupport.h"
#include "host/WindowServices.h"
#include "workbench/hosting/DialogHost.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/LongTexts.h"
#include "workbench/hosting/TableInUse.h"

using quillara::Control;
using quillara::FieldRange;
using quillara::Variable;

namespace {

Control* ControlOf(HWND window, int id) {
    return dynamic_cast<Control*>(GetDlgItem(window, id));
}

void Limit(HWND field, FieldRange range) {
    if (auto* control = dynamic_cast<Control*>(field)) {
        control->Range = range;
    }
}

void WriteNumber(Control* field, double value) {
    if (field != nullptr) {
        field->Number = value;
        field->HasNumber = true;
    }
}

bool IsSmallInteger(double value) {
    using Limits = std::numeric_limits<std::int16_t>;
    return value == std::floor(value) && value >= Limits::min() && value <= Limits::max();
}

}  // namespace

HWND CAnalysisDialog::GetDlgItem(HWND window, int id) {
    return ::GetDlgItem(window, id);
}

void CAnalysisDialog::EnableWindow(HWND window, int id, bool enable) {
    ::EnableWindow(::GetDlgItem(window, id), enable);
}

void CAnalysisDialog::ShowWindow(HWND window, int id, bool show) {
    if (Control* control = ControlOf(window, id)) {
        control->Visible = show;
    }
}

void CAnalysisDialog::CheckDlgButton(HWND window, int id, bool check) {
    if (Control* control = ControlOf(window, id)) {
        control->Checked = check;
    }
}

bool CAnalysisDialog::IsDlgButtonChecked(HWND window, int id) {
    const Control* control = ControlOf(window, id);
    return control != nullptr && control->Checked;
}

int CAnalysisDialog::GetDlgItemTextA(HWND window, int id, char* text, int size) {
    if (size <= 0) {
        return 0;
    }
    const Control* control = ControlOf(window, id);
    const std::string content = control == nullptr ? "" : control->Text.substr(0, static_cast<std::size_t>(size) - 1);
    *std::copy(content.begin(), content.end(), text) = '\0';
    return static_cast<int>(content.size());
}

void CAnalysisDialog::SetDlgItemTextA(HWND window, int id, const char* text) {
    if (Control* control = ControlOf(window, id)) {
        control->Text = quillara::Replace8CharGrow(text);
    }
}

void CAnalysisDialog::InitStaticListBox(HWND listBox, const char* const* texts) {
    ::InitStaticListBox(listBox, texts);
}

void CAnalysisDialog::WriteVarListToCaption(HWND window, int id, int count, const short* variables) {
    std::string names;
    for (int i = 0; i < count; ++i) {
        if (const Variable* variable = quillara::TableOf(DialogHost::DocumentOf(*this)).Find(variables[i])) {
            names += (names.empty() ? "" : ", ") + variable->Name;
        }
    }
    if (Control* caption = ControlOf(window, id)) {
        caption->Text = names.empty() ? "none" : names;
    }
    quillara::DialogsOf(DialogHost::DocumentOf(*this)).Chosen.Show(id, {variables, variables + std::max(count, 0)});
}

void CAnalysisDialog::SetIntEditRange(HWND field, int lowest, int highest) {
    Limit(field, {static_cast<double>(lowest), static_cast<double>(highest)});
}

void CAnalysisDialog::SetRealEditRange(HWND field, double lowest, double highest, int /*mode*/) {
    Limit(field, {lowest, highest});
}

void CAnalysisDialog::SetDlgItemInt(HWND window, int id, int value, int /*mode*/) {
    WriteNumber(ControlOf(window, id), value);
}

void CAnalysisDialog::SetDlgItemDouble(HWND window, int id, double value, int /*mode*/, int /*format*/) {
    WriteNumber(ControlOf(window, id), value);
}

int CAnalysisDialog::GetDlgItemInteger(HWND window, int id, std::int16_t* value) {
    const Control* field = ControlOf(window, id);
    if (field == nullptr || !field->HasNumber || !IsSmallInteger(field->Number)) {
        return 1;
    }
    *value = static_cast<std::int16_t>(field->Number);
    return 0;
}

int CAnalysisDialog::GetDlgItemDouble(HWND window, int id, double* value) {
    const Control* field = ControlOf(window, id);
    if (field == nullptr || !field->HasNumber) {
        return 1;
    }
    *value = field->Number;
    return 0;
}
