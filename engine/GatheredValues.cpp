#include "engine/GatheredValues.h"

using namespace drilldown;

namespace {

/// Other columns come before this one goes on, so what it goes on with is asked for now.
void GatherDoubles(const double* entries, const WeightedRows& rows, double* values) {
    for (std::size_t i = 0; i < rows.Count; ++i) {
        const double* entry = entries + rows.Rows[i];
        __builtin_prefetch(entry + GatheredValuesLimit);
        values[i] = *entry;
    }
}

}  // namespace

WeightedRows drilldown::WithoutList(const WeightedRows& rows) {
    const bool gaps =
        rows.Rows != nullptr && rows.Rows[rows.Count - 1] - rows.Rows[0] != static_cast<std::int32_t>(rows.Count) - 1;
    return gaps ? rows : WeightedRows{nullptr, rows.Weights, rows.Count, rows.RowAt(0)};
}

const double* drilldown::GatherValues(const TableColumn& column, const WeightedRows& rows, double* room) {
    const bool doubles = column.Form == ColumnForm::Doubles;
    if (rows.Rows == nullptr && doubles) {
        return column.As<double>() + rows.First;
    }
    if (doubles) {
        GatherDoubles(column.As<double>(), rows, room);
        return room;
    }
    WithValues(column, [&](auto valueOf) {
        for (std::size_t i = 0; i < rows.Count; ++i) {
            room[i] = valueOf(rows.RowAt(i));
        }
    });
    return room;
}
