#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <span>
#include <vector>

#include "host/TableColumns.h"

namespace quillara {

/// The values of a variable, one per case, numbered from 0. They don't change once the column is made; copies of a
/// column share them.
class Column {
  public:
    class Iterator;
    using value_type = double;
    using const_iterator = Iterator;

    Column() = default;
    /// Keeps the values as they are, as doubles.
    Column(std::vector<double> values);  // NOLINT(google-explicit-constructor): the values are the column
    /// Keeps whole values.
    [[nodiscard]] static Column OfIntegers(std::vector<std::int32_t> values);
    /// Keeps codes and the value of each; every code lies below their number.
    [[nodiscard]] static Column OfCodes(std::vector<std::uint8_t> codes, std::vector<double> values);
    [[nodiscard]] static Column OfCodes(std::vector<std::uint16_t> codes, std::vector<double> values);
    /// Values that stand elsewhere, in any form, and don't change; the column and its copies keep their owner alive.
    [[nodiscard]] static Column Borrowed(const TableColumn& stored, std::size_t count,
                                         std::shared_ptr<const void> owner);
    [[nodiscard]] static Column Borrowed(std::span<const double> values, std::shared_ptr<const void> owner);
    /// The same codes with other values; only of a column of codes. `values` has one for each.
    [[nodiscard]] Column WithValues(std::vector<double> values) const;

    [[nodiscard]] std::size_t size() const { return Count; }
    [[nodiscard]] bool empty() const { return Count == 0; }
    [[nodiscard]] double operator[](std::size_t row) const { return Entries.At(static_cast<std::int32_t>(row)); }
    [[nodiscard]] Iterator begin() const;
    [[nodiscard]] Iterator end() const;

    /// The values of rows first, first + 1, ..., as many as `room` holds: where they stand, if they stand as doubles,
    /// else written into `room`.
    [[nodiscard]] std::span<const double> Run(std::size_t first, std::span<double> room) const;
    /// All values, if they stand as doubles; else empty.
    [[nodiscard]] std::span<const double> Doubles() const;
    /// The values of codes, of which some may have no case; of another form nothing.
    [[nodiscard]] std::span<const double> ValuesOfCodes() const;
    /// Which of them have a case.
    [[nodiscard]] std::vector<bool> UsedCodes() const;
    /// The values as they lie in memory.
    [[nodiscard]] const TableColumn& Stored() const { return Entries; }

    /// Whether the same values stand in the same order, in whatever form.
    friend bool operator==(const Column& left, const Column& right);

  private:
    TableColumn Entries;
    std::size_t Count = 0;
    std::shared_ptr<const void> Owner;  // of the entries
    std::shared_ptr<const void> ValueOwner;  // of the values of codes, if it is another
};

/// Calls `visit(values)` for one run of a column's values after the other; `values` is a span that is read at once.
template <typename Visit>
void VisitRuns(const Column& column, Visit visit) {
    constexpr std::size_t length = 1024;
    double room[length];
    for (std::size_t first = 0; first < column.size(); first += length) {
        const std::size_t count = column.size() - first < length ? column.size() - first : length;
        visit(column.Run(first, std::span(room, count)));
    }
}

/// Goes through the values of a column, which must outlive it.
class Column::Iterator {
  public:
    using value_type = double;
    using difference_type = std::ptrdiff_t;
    using reference = double;
    using pointer = void;
    using iterator_category = std::input_iterator_tag;
    using iterator_concept = std::forward_iterator_tag;

    Iterator() = default;
    Iterator(const Column& column, std::size_t row) : Values(&column), Row(row) {}

    double operator*() const { return (*Values)[Row]; }
    Iterator& operator++() {
        ++Row;
        return *this;
    }
    Iterator operator++(int) {
        const Iterator before = *this;
        ++Row;
        return before;
    }
    friend bool operator==(const Iterator& left, const Iterator& right) { return left.Row == right.Row; }

  private:
    const Column* Values = nullptr;
    std::size_t Row = 0;
};

inline Column::Iterator Column::begin() const {
    return {*this, 0};
}

inline Column::Iterator Column::end() const {
    return {*this, Count};
}

/// Whether a test holds for all values of a column; of codes each is tested once, if a case has it.
template <typename Test>
[[nodiscard]] bool HoldsForAll(const Column& column, Test test) {
    const std::vector<bool> isUsed = column.UsedCodes();
    for (std::size_t code = 0; code < isUsed.size(); ++code) {
        if (isUsed[code] && !test(column.ValuesOfCodes()[code])) {
            return false;
        }
    }
    return !isUsed.empty() || std::ranges::all_of(column, test);
}

/// Calls `visit(value)` for all values of a column; of codes once for each, if a case has it.
template <typename Visit>
void VisitValues(const Column& column, Visit visit) {
    static_cast<void>(HoldsForAll(column, [&](double value) {
        visit(value);
        return true;
    }));
}

}  // namespace quillara
