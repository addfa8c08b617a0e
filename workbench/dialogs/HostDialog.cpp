#include "workbench/dialogs/HostDialog.h"

#include <exception>
#include <new>
#include <utility>

#include "platform/WindowMessages.h"

namespace quillara {
namespace {

DialogResource Renamed(DialogResource resource, const std::string& title) {
    resource.Title = title.c_str();
    return resource;
}

}  // namespace

HostDialog::HostDialog(MessageQueue& queue, const DialogResource& resource, Tell tell)
    : HostDialog(queue, resource, resource.Title, std::move(tell)) {}

HostDialog::HostDialog(MessageQueue& queue, const DialogResource& resource, std::string title, Tell tell)
    : Title(std::move(title)),
      Shape(Renamed(resource, Title)),
      TellUser(std::move(tell)),
      TheWindow(queue, Shape, [this](HWND /*window*/, unsigned message, std::uint64_t wParam, std::int64_t /*lParam*/) {
          return Act(message, wParam);
      }) {
    TheWindow.SetContent(this);
}

void HostDialog::Use(int /*control*/) {}

void HostDialog::Update() {}

std::int64_t HostDialog::Act(unsigned message, std::uint64_t wParam) {
    const int command = message == WindowMessage::Command ? CommandOf(wParam) : 0;
    if (command == OkCommand) {
        TryToAccept();
    } else if (command == CancelCommand) {
        TheWindow.Close(CancelCommand);
    } else if (command != 0) {
        Use(command);
    }
    Update();
    return command != 0 ? 1 : 0;
}

void HostDialog::TryToAccept() {
    try {
        Accept();
        TheWindow.Close(OkCommand);
    } catch (const std::bad_alloc&) {
        Say(NoMemory);
    } catch (const std::exception& error) {
        Say(error.what());
    }
}

void HostDialog::Say(std::string_view text) const {
    if (TellUser) {
        TellUser(text);
    }
}

ReportRow NumberedRow(int number, std::vector<std::string> cells) {
    const auto value = static_cast<double>(number);
    return {std::move(cells), RowRange{value, value, true, true}};
}

int NumberOf(const ReportRow& row) {
    return static_cast<int>(row.Range->Lower);
}

const ReportRow* SelectedRow(const Control& list) {
    const bool selects = list.Selected >= 0 && static_cast<std::size_t>(list.Selected) < list.ReportRows.size();
    return selects ? &list.ReportRows[static_cast<std::size_t>(list.Selected)] : nullptr;
}

}  // namespace quillara
