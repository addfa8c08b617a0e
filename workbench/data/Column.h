#pragma once

#include <cstddef>
#include <iterator>
#include <memory>
#include <span>
#include <vector>

namespace quillara {

/// The values of a variable, one per case, numbered from 0. They don't change once the column is made; copies of a
/// column share them.
class Column {
  public:
    class Iterator;
    using value_type = double;
    using const_iterator = Iterator;

    Column() = default;
    /// Keeps the values as they are.
    Column(std::vector<double> values);  // NOLINT(google-explicit-constructor): the values are the column
    /// Values that stand elsewhere and don't change; the column and its copies keep their owner alive.
    [[nodiscard]] static Column Borrowed(std::span<const double> values, std::shared_ptr<const void> owner);

    [[nodiscard]] std::size_t size() const { return Count; }
    [[nodiscard]] bool empty() const { return Count == 0; }
    [[nodiscard]] double operator[](std::size_t row) const { return Numbers[row]; }
    [[nodiscard]] Iterator begin() const;
    [[nodiscard]] Iterator end() const;

    /// The values of rows first, first + 1, ..., as many as `room` holds: where they stand, if they stand as doubles,
    /// else written into `room`.
    [[nodiscard]] std::span<const double> Run(std::size_t first, std::span<double> room) const;
    /// All values, if they stand as doubles; else empty.
    [[nodiscard]] std::span<const double> Doubles() const { return {Numbers, Count}; }

    /// Whether the same values stand in the same order.
    friend bool operator==(const Column& left, const Column& right);

  private:
    std::shared_ptr<const void> Owner;
    const double* Numbers = nullptr;
    std::size_t Count = 0;
};

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

}  // namespace quillara
