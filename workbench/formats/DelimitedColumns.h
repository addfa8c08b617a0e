#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "workbench/data/DataTable.h"

namespace quillara {

/// One column of a table as delimited text: the names of the cases, or a variable. Each value is put into words once.
class ShownColumn {
  public:
    ShownColumn(std::string name, const std::vector<std::string>& caseNames);
    explicit ShownColumn(const Variable& variable);

    [[nodiscard]] const std::string& Name() const { return Title; }
    /// What the fields are to be read back as.
    [[nodiscard]] ValueKind Kind() const;
    /// The variable; null for the names of the cases.
    [[nodiscard]] const Variable* Source() const { return Shown; }

    /// Whether a case has no value; an unnamed case counts as such.
    [[nodiscard]] bool IsMissing(std::size_t row) const;
    /// The field of a case; empty for missing data and for a value that no text stands for. Valid until the next call.
    [[nodiscard]] const std::string& Field(std::size_t row);

  private:
    [[nodiscard]] std::string TextOf(double value) const;

    std::string Title;
    const std::vector<std::string>* CaseNames = nullptr;
    const Variable* Shown = nullptr;
    bool HasLabels = false;
    std::unordered_map<double, std::string> Fields;
    std::string Last;
};

/// The columns of a table, the names of the cases first where it has such.
[[nodiscard]] std::vector<ShownColumn> ShownColumns(const DataTable& table);

}  // namespace quillara
