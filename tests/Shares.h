#pragma once

/// The row of a table with shares of 100 on which a number from 0 to 99 falls.
template <typename Rows>
[[nodiscard]] constexpr const auto& RowByShare(const Rows& rows, int drawn) {
    const auto* row = rows.begin();
    for (; drawn >= row->Share; ++row) {
        drawn -= row->Share;
    }
    return *row;
}
