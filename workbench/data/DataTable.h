#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/data/Column.h"

namespace quillara {

class ColumnBuilder;
struct MissingReasons;

/// What the numbers of a variable stand for.
enum class ValueKind {
    Number,
    Date,  ///< days since 1970-01-01
    TimeOfDay,  ///< seconds since midnight
    DateTime,  ///< seconds since 1970-01-01T00:00:00 UTC
    Text,  ///< 1, 2, ...: the place of the text among the distinct texts in byte order
};

/// Whether values of this kind are points in time.
[[nodiscard]] constexpr bool IsTimeKind(ValueKind kind) {
    return kind == ValueKind::Date || kind == ValueKind::TimeOfDay || kind == ValueKind::DateTime;
}

/// The texts of one value; either may be empty.
struct ValueTexts {
    std::string Label;  ///< what the value is shown as
    std::string Description;  ///< a second, longer text
};

/// One variable: its dictionary entry and its column.
struct Variable {
    std::string Name;
    std::string LongName;  ///< the variable's label in its file; may be empty
    ValueKind Kind = ValueKind::Number;
    std::string Format;  ///< display format as the file writes it ("F8.2"); may be empty
    double MissingCode = -9999;  ///< the one value that stands for missing data
    std::vector<std::string> Texts;  ///< Kind Text only: the text of value i stands at i - 1
    std::map<double, ValueTexts> Labels;  ///< labels and descriptions by value; before Texts
    Column Values;  ///< one per case; missing data is MissingCode
    /// Which missing values of the file the cases have (MissingReasons.h); null: missing data aren't told apart.
    std::shared_ptr<const MissingReasons> Reasons{};

    /// The label of exactly this value (its text, for a text value without a label of its own); null when it has none
    /// or an empty one.
    [[nodiscard]] const std::string* LabelOf(double value) const;
    /// The description of exactly this value; null when it has none or an empty one.
    [[nodiscard]] const std::string* DescriptionOf(double value) const;
    /// Whether a value is the missing code or nearly equal to it.
    [[nodiscard]] bool IsMissing(double value) const;
    /// Whether the variable's values are texts or have labels.
    [[nodiscard]] bool HasLabels() const;
};

struct DataTable;

/// Knows of the columns of a table what they must be, for a table that is opened before its columns are read.
class ColumnGuard {
  public:
    virtual ~ColumnGuard() = default;
    /// Reads a column and gives the table the same one, checked. Throws DataError when it is damaged. Columns may be
    /// checked by several threads at once.
    virtual void Check(DataTable& table, std::size_t variable) const = 0;
};

/// A table of numbered variables and cases. Columns all have Cases entries.
struct DataTable {
    std::string FileName;  ///< name of the file without its folder
    std::string Header;  ///< title text of the file; may be empty
    std::int32_t Cases = 0;
    std::vector<Variable> Variables;
    std::vector<std::string> CaseNames;  ///< one per case, or empty: the cases have no names
    std::optional<std::size_t> Weight;  ///< index of the weight variable that the file declares
    std::shared_ptr<const ColumnGuard> Unchecked;  ///< of columns that are to be checked before use; null: of none

    /// Index of the variable of exactly this name.
    [[nodiscard]] std::optional<std::size_t> Find(std::string_view name) const;
    /// As Find; throws DataError naming the variable when there is none.
    [[nodiscard]] std::size_t IndexOf(std::string_view name) const;
    /// Width of the case-name field: bytes of the longest case name, at least those of an ordinary row name, at most
    /// 218: longer names travel as keys; 0 without case names.
    [[nodiscard]] std::size_t CaseNameWidth() const;
};

/// Index of the variable of exactly this name, which is to weight the cases. Throws DataError when there is none or it
/// holds texts.
[[nodiscard]] std::size_t WeightNamed(const DataTable& table, const std::string& name);

/// Gives a variable numbers, of which NaN stands for missing data, in their narrowest form, and its missing code
/// (MissingCodes.h).
void EncodeNumbers(Variable& variable, ColumnBuilder&& values);
void EncodeNumbers(Variable& variable, std::vector<double> values);

/// Gives a text variable its values, texts and missing code: distinct texts numbered from 1 in byte order; a case
/// without a text is missing.
void EncodeTexts(Variable& variable, const std::vector<std::optional<std::string>>& texts);

/// Throws DataError when the table is larger than an analysis can number: 32,766 variables, 2^31 - 2 cases.
void CheckSize(std::size_t variables, std::size_t cases);

}  // namespace quillara
