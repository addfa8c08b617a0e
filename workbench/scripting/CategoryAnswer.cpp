#include "workbench/scripting/CategoryAnswer.h"

#include <vector>

#include "platform/WindowMessages.h"
#include "resources/ControlIds.h"
#include "workbench/windows/Window.h"

namespace quillara {
namespace {

/// The rows of the category dialog; the one of the missing data stands for no values.
std::vector<CategoryRow> RowsOf(Window& dialog) {
    std::vector<CategoryRow> rows;
    for (const ReportRow& row : dialog.At(CategoryListControl).ReportRows) {
        rows.push_back({row.Cells.front(), row.Range});
    }
    return rows;
}

}  // namespace

void AnswerWithCategory(Window& dialog, const Variable& variable, const RowChooser& chooseRow) {
    const std::size_t row =
        chooseRow({variable.Name, variable.Kind, RowsOf(dialog), variable.Texts, !variable.Labels.empty()});
    dialog.ClickRow(CategoryListControl, static_cast<int>(row));
    dialog.Click(OkCommand);
}

}  // namespace quillara
