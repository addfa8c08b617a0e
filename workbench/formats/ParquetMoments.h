#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/data/ColumnBuilder.h"
#include "workbench/data/DataTable.h"
#include "workbench/data/Remark.h"

namespace quillara {

/// How days, times of day and moments of one type lie in memory: as whole numbers of a unit.
struct MomentType {
    std::string_view Name;  ///< as SQL calls it
    ValueKind Kind = ValueKind::DateTime;
    std::size_t Bytes = sizeof(std::int64_t);  ///< of a number: 4 or 8
    std::int64_t UnitsOfSecond = 1;  ///< days are units of themselves
    bool IsUtc = false;  ///< whether its moments are such on earth, brought to UTC
};

/// The type of this name; null for one of other values.
[[nodiscard]] const MomentType* FindMomentType(std::string_view name);

/// The values of one column of moments, gathered case by case.
class MomentColumn {
  public:
    /// The type must outlive the column.
    explicit MomentColumn(const MomentType& type) : Type(type) {}

    /// The next case, by its number in memory; null is missing data. False where a variable of the type's kind can't
    /// tell it: a day outside the years 1 to 9999, infinity, a part of a second in a time of day.
    bool Append(const void* number);
    [[nodiscard]] std::size_t Bytes() const { return Type.Bytes; }

    /// Gives a variable the values; the column is empty then.
    void Take(Variable& variable);
    /// What their reader should know of a variable of this name.
    [[nodiscard]] std::optional<Remark> RemarkOn(const std::string& name) const;

  private:
    const MomentType& Type;
    ColumnBuilder Values;
    bool IsRounded = false;  // whether some value is
};

}  // namespace quillara
