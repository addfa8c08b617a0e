#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/data/Column.h"
#include "workbench/data/ColumnBuilder.h"
#include "workbench/data/DataTable.h"

namespace quillara {

/// Numbers that are missing data by declaration, both ends included; a single code is a range of one number.
struct MissingRange {
    double Lowest = 0.0;  ///< may be endless
    double Highest = 0.0;

    [[nodiscard]] bool Contains(double value) const { return Lowest <= value && value <= Highest; }
    friend bool operator==(const MissingRange&, const MissingRange&) = default;
};

/// One of the missing values that a file tells apart: 99 "Not stated".
struct MissingReason {
    std::optional<double> Number{};  ///< the value, of a number or point in time
    std::string Text{};  ///< the value of a text variable; of others a mark that is no number, ".a" to ".z"
    std::string Label{};  ///< may be empty

    [[nodiscard]] bool IsSameValue(const MissingReason& other) const {
        return Number == other.Number && Text == other.Text;
    }
};

/// Why cases lack a value, beside the values of a variable, where all of them are its missing code. Blank fields have
/// no reason.
struct MissingReasons {
    std::vector<MissingRange> Ranges;  ///< declared; of numbers and points in time
    /// All that are declared one by one, that have a label, or that a case has.
    std::vector<MissingReason> Reasons;
    Column Places;  ///< one per case: the place of its reason, from 1; 0: none. Empty: no case has one.

    /// 0 for a case without a reason.
    [[nodiscard]] std::size_t PlaceAt(std::size_t row) const {
        const double place = Places.empty() ? 0.0 : Places[row];
        return place >= 1.0 && place <= static_cast<double>(Reasons.size()) ? static_cast<std::size_t>(place) : 0;
    }
    /// Null for a case without a reason.
    [[nodiscard]] const MissingReason* At(std::size_t row) const {
        const std::size_t place = PlaceAt(row);
        return place == 0 ? nullptr : &Reasons[place - 1];
    }
    [[nodiscard]] bool Declares(double value) const;
    /// How many cases have each reason, by its place; at 0 those that have none.
    [[nodiscard]] std::vector<std::size_t> Counts() const;
};

/// Puts the places of reasons together case by case, in as few bits as they need.
class ReasonPlaces {
  public:
    void Append(std::size_t code) {
        HasAny = HasAny || code > 0;
        Rows.Append(static_cast<std::uint32_t>(code));
    }
    [[nodiscard]] std::size_t Size() const { return Rows.Size(); }
    /// The column, in which the value of each code stands in its place; of code 0 it is 0. Empty when all codes are 0.
    [[nodiscard]] Column Finish(std::vector<double> valuesOfCodes);
    /// The same where codes are places.
    [[nodiscard]] Column Finish(std::size_t reasons);

  private:
    CodeRows Rows;
    bool HasAny = false;
};

/// A reason's value as it is written: 99, 2024-01-31, XX, .a
[[nodiscard]] std::string CodeOfReason(const Variable& variable, const MissingReason& reason);

/// The place, from 1, of the reason that a text names by its value or label; 0 for none. Numbers may be written in any
/// form.
[[nodiscard]] std::size_t ReasonNamed(const Variable& variable, std::string_view text);
/// "98 "Refused", 99": all that there are, for messages; empty without any.
[[nodiscard]] std::string ListOfReasons(const Variable& variable);

/// Labels the reason that a number is; false for a number that isn't declared missing.
bool LabelReason(Variable& variable, double number, const std::string& label);
/// The same for a text or a mark.
bool LabelReason(Variable& variable, std::string_view text, const std::string& label);

/// The reasons of some of the cases, in an order of their own; `rows` are numbered from 0. Null for null.
[[nodiscard]] std::shared_ptr<const MissingReasons> ReasonsOfRows(const std::shared_ptr<const MissingReasons>& reasons,
                                                                  const std::vector<std::size_t>& rows);

}  // namespace quillara
