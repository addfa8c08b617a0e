#include "workbench/recording/RecordedVariables.h"

#include <algorithm>
#include <vector>

#include "workbench/hosting/DialogHost.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/recording/PythonText.h"
#include "workbench/recording/StepTokens.h"

namespace quillara {
namespace {

/// Names are shown without the blanks at their ends.
std::string Trimmed(const std::string& name) {
    const std::size_t begin = std::min(name.find_first_not_of(' '), name.size());
    return name.substr(begin, name.find_last_not_of(' ') + 1 - begin);
}

int NumberNamed(const DataTable& table, const std::string& name) {
    const auto found =
        std::ranges::find(table.Variables, name, [](const Variable& each) { return Trimmed(each.Name); });
    return static_cast<int>(found - table.Variables.begin()) + 1;
}

}  // namespace

std::string PythonVariable(const CAnalysisDialog& dialog, int list, const std::string& name) {
    const std::vector<std::string>& rows = DialogHost::WindowOf(dialog)->At(list).Rows;
    const auto isOf = [&name](const std::string& row) { return row == name || row.starts_with(name + " ("); };
    const auto row = std::ranges::find_if(rows, isOf);
    const auto token = VariableToken(rows, static_cast<std::size_t>(row - rows.begin()), name);
    if (token && std::ranges::count_if(rows, isOf) == 1) {
        return PythonText(*token);
    }
    const DataTable& table = TableOf(DialogHost::DocumentOf(dialog)).Table();
    return std::to_string(NumberNamed(table, name)) + PythonComment(name);
}

}  // namespace quillara
