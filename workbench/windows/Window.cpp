#include "workbench/windows/Window.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/WindowMessages.h"
#include "workbench/data/Errors.h"
#include "workbench/windows/MessageQueue.h"

namespace quillara {
namespace {

constexpr std::uint64_t SelectionChanged = std::uint64_t{1} << 16;  // in the high half of a command's wParam

std::string Described(const Window& window, int id) {
    return "The control " + std::to_string(id) + " of the window \"" + window.Resource().Title + "\"";
}

/// The colour query for controls of a kind.
unsigned ColourQueryOf(ControlKind kind) {
    switch (kind) {
        case ControlKind::Edit:
        case ControlKind::MultiLineEdit:
        case ControlKind::IntegerField:
        case ControlKind::RealField:
            return WindowMessage::ColourOfEdit;
        case ControlKind::ListBox:
            return WindowMessage::ColourOfEdit + 1;
        case ControlKind::Button:
        case ControlKind::DefaultButton:
            return WindowMessage::ColourOfEdit + 2;
        default:
            return WindowMessage::ColourOfStatic;
    }
}

int RowsOf(const Control& list) {
    return static_cast<int>(list.Kind == ControlKind::ReportList ? list.ReportRows.size() : list.Rows.size());
}

std::int64_t AddressOf(const ListNotification& notification) {
    return reinterpret_cast<std::int64_t>(&notification);
}

void Report(Window& window, Control& list, int code) {
    const ListNotification notification{&list, list.Id, code, list.Selected};
    window.Send(WindowMessage::Notify, static_cast<std::uint64_t>(list.Id), AddressOf(notification));
}

}  // namespace

Window::Window(MessageQueue& queue, const DialogResource& resource, Procedure procedure)
    : Queue(queue), Main(&resource), Act(std::move(procedure)) {
    AddControls(resource);
}

Window::~Window() {
    Queue.Forget(*this);
    for (auto& [id, control] : Controls) {
        if (CReorderListBox* reordering = std::exchange(control.Reordering, nullptr)) {
            reordering->EndOfWindow();
        }
    }
}

void Window::AddPage(const DialogResource& page) {
    PageResources.push_back(&page);
    AddControls(page);
}

void Window::AddControls(const DialogResource& resource) {
    for (const ControlResource& row : resource.Controls) {
        if (row.Id == NoControlId || Controls.contains(row.Id)) {
            continue;
        }
        Control& control = Controls[row.Id];
        control.Id = row.Id;
        control.Kind = row.Kind;
        control.Caption = row.Caption == nullptr ? "" : row.Caption;
        control.Text = control.Caption;
        control.Owner = this;
    }
}

void Window::Start() {
    Send(WindowMessage::InitDialog, 0, 0);
    for (auto& [id, control] : Controls) {
        Send(ColourQueryOf(control.Kind), 0, reinterpret_cast<std::int64_t>(static_cast<HWND>(&control)));
    }
}

std::int64_t Window::Send(unsigned message, std::uint64_t wParam, std::int64_t lParam) {
    return IsClosed() ? 0 : Act(this, message, wParam, lParam);
}

void Window::Post(unsigned message, std::uint64_t wParam, std::int64_t lParam) {
    if (!IsClosed()) {
        Queue.Post(*this, message, wParam, lParam);
    }
}

std::int64_t Window::SendCommand(int id) {
    return Send(WindowMessage::Command, static_cast<std::uint64_t>(id), 0);
}

Control* Window::Find(int id) {
    const auto found = Controls.find(id);
    return found == Controls.end() ? nullptr : &found->second;
}

Control& Window::At(int id) {
    Control* control = Find(id);
    if (control == nullptr) {
        throw UsageError(Described(*this, id) + " isn't there.");
    }
    return *control;
}

Control& Window::Usable(int id, std::initializer_list<ControlKind> kinds) {
    Control& control = At(id);
    if (!Enabled) {
        throw UsageError("The window \"" + std::string(Main->Title) +
                         "\" can't be used while another one waits for an answer.");
    }
    if (!control.Visible || !control.Enabled) {
        throw UsageError(Described(*this, id) + (control.Visible ? " is disabled." : " can't be seen."));
    }
    if (std::ranges::find(kinds, control.Kind) == kinds.end()) {
        throw UsageError(Described(*this, id) + " isn't of the kind that can be used so.");
    }
    return control;
}

void Window::Tell(const char* name, std::initializer_list<double> numbers) {
    if (Queue.Hear) {
        Queue.Hear(*this, {name, {numbers.begin(), numbers.end()}});
    }
}

void Window::Click(int id) {
    Control& button =
        Usable(id, {ControlKind::Button, ControlKind::DefaultButton, ControlKind::CheckBox, ControlKind::RadioButton});
    Tell("click", {static_cast<double>(id)});
    Press(button);
}

std::int64_t Window::Press(Control& control) {
    if (control.Kind == ControlKind::CheckBox) {
        control.Checked = !control.Checked;
    } else if (control.Kind == ControlKind::RadioButton) {
        TakeRadioCheck(control);
    }
    return SendCommand(control.Id);
}

/// The radio buttons of one resource are one group.
void Window::TakeRadioCheck(const Control& button) {
    const auto holds = [&](const DialogResource* resource) {
        return std::ranges::any_of(resource->Controls, [&](const ControlResource& row) { return row.Id == button.Id; });
    };
    std::vector<const DialogResource*> resources = PageResources;
    resources.push_back(Main);
    const DialogResource& group = **std::ranges::find_if(resources, holds);
    for (const ControlResource& row : group.Controls) {
        if (row.Kind == ControlKind::RadioButton) {
            At(row.Id).Checked = row.Id == button.Id;
        }
    }
}

void Window::SelectRow(Control& list, int row) {
    if (row < 0 || row >= RowsOf(list)) {
        throw UsageError("The list " + std::to_string(list.Id) + " of the window \"" + Main->Title + "\" has no row " +
                         std::to_string(row) + ".");
    }
    list.Selected = row;
}

void Window::ChooseRow(Control& list, int row) {
    SelectRow(list, row);
    if (list.Kind == ControlKind::ReportList) {
        Report(*this, list, ListEvent::ItemChanged);
    } else {
        Send(WindowMessage::Command, static_cast<std::uint64_t>(list.Id) | SelectionChanged, 0);
    }
}

void Window::ClickRow(int id, int row) {
    Control& list = Usable(id, {ControlKind::ListBox, ControlKind::ReportList});
    Tell("select", {static_cast<double>(id), static_cast<double>(row)});
    ChooseRow(list, row);
}

void Window::DoubleClickRow(int id, int row) {
    Control& list = Usable(id, {ControlKind::ListBox, ControlKind::ReportList});
    Tell("double_click", {static_cast<double>(id), static_cast<double>(row)});
    ChooseRow(list, row);
    if (list.Kind == ControlKind::ReportList) {
        Report(*this, list, ListEvent::DoubleClick);
    }
}

void Window::ClickText(int id, std::string_view text) {
    const Control& list = Usable(id, {ControlKind::ListBox, ControlKind::ReportList});
    int row = 0;
    const auto textOf = [&](int index) -> std::string_view {
        const auto place = static_cast<std::size_t>(index);
        return list.Kind == ControlKind::ListBox ? list.Rows[place] : list.ReportRows[place].Cells.front();
    };
    while (row < RowsOf(list) && textOf(row) != text) {
        ++row;
    }
    if (row == RowsOf(list)) {
        throw UsageError("The list " + std::to_string(id) + " of the window \"" + Main->Title + "\" has no row \"" +
                         std::string(text) + "\".");
    }
    ClickRow(id, row);
}

void Window::Type(int id, std::string_view text) {
    Control& edit = Usable(id, {ControlKind::Edit, ControlKind::MultiLineEdit});
    if (Queue.Hear) {
        Queue.Hear(*this, {"text", {static_cast<double>(id), std::string(text)}});
    }
    edit.Text = text;
}

void Window::TypeNumber(int id, double number) {
    Control& field = Usable(id, {ControlKind::IntegerField, ControlKind::RealField});
    if (!std::isfinite(number)) {
        throw UsageError(Described(*this, id) + " takes finite numbers only.");
    }
    Tell("text", {static_cast<double>(id), number});
    const double entry = field.Kind == ControlKind::IntegerField ? std::round(number) : number;
    field.Number = field.Range ? std::clamp(entry, field.Range->Lowest, field.Range->Highest) : entry;
    field.HasNumber = true;
}

void Window::Drag(int id, int target) {
    const Control& list = Usable(id, {ControlKind::ListBox});
    if (target < 0 || target > RowsOf(list)) {
        throw UsageError(Described(*this, id) + " has no place " + std::to_string(target) + " to drag a row to.");
    }
    if (list.Reordering != nullptr) {
        Tell("drag", {static_cast<double>(id), static_cast<double>(list.Selected), static_cast<double>(target)});
        list.Reordering->MoveSelectionTo(target);
    }
}

void Window::Close(int result) {
    if (!IsClosed()) {
        Result = result;
        Queue.Forget(*this);
    }
}

}  // namespace quillara
