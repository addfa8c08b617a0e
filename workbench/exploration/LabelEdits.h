#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "workbench/data/DataTable.h"

namespace quillara {

/// Texts of a table that are to be others, and variables that are to be of another kind. The table itself stays as it
/// is: what has been analysed doesn't change under its analysis.
class LabelEdits {
  public:
    [[nodiscard]] bool IsEmpty() const { return Variables.empty(); }
    /// The label of a variable, by its index in `table`; what is there already is no edit.
    void SetLabel(const DataTable& table, std::size_t variable, const std::string& label);
    /// Label and description of a value.
    void SetTexts(const DataTable& table, std::size_t variable, double value, const ValueTexts& texts);
    /// What the values of a variable are to be. Throws DataError, and changes nothing, where values would be lost
    /// (OfKind) or the variable weights the cases and would hold texts.
    void SetKind(const DataTable& table, std::size_t variable, ValueKind kind);
    [[nodiscard]] ValueKind KindOf(const DataTable& table, std::size_t variable) const;
    /// As they are with the edits.
    [[nodiscard]] const std::string& LabelOf(const DataTable& table, std::size_t variable) const;
    [[nodiscard]] ValueTexts TextsOf(const DataTable& table, std::size_t variable, double value) const;
    void Clear() { Variables.clear(); }

    /// A table with them, which shares the values of the cases with the first one, but those of another kind.
    [[nodiscard]] std::shared_ptr<const DataTable> Apply(const DataTable& table) const;

  private:
    struct OfVariable {
        std::optional<std::string> Label;
        std::map<double, ValueTexts> Values;
        std::optional<ValueKind> Kind;
    };

    void Tidy(std::size_t variable);

    std::map<std::size_t, OfVariable> Variables;  // those with any
};

}  // namespace quillara
