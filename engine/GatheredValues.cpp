#include "engine/GatheredValues.h"

#include "engine/MomentKernel.h"

using namespace drilldown;

namespace {

constexpr std::size_t DoublesOfLine = 8;
/// Of so many rows at least one must be there, or going through all is slower than through a list.
constexpr std::size_t RowsPerHit = 4;
constexpr std::size_t RowsPerHitOfCodes = 2;

/// Other columns come before this one goes on, so what it goes on with is asked for now.
void AskForNextValues(const double* values, std::size_t count) {
    for (std::size_t i = 0; i < count; i += DoublesOfLine) {
        __builtin_prefetch(values + i + RowsAhead);
    }
}

/// As above, value by value.
void GatherDoubles(const double* entries, const WeightedRows& rows, double* values) {
    for (std::size_t i = 0; i < rows.Count; ++i) {
        const double* entry = entries + rows.RowAt(i);
        __builtin_prefetch(entry + GatheredValuesLimit);
        values[i] = *entry;
    }
}

/// Whether going through all rows between is quicker.
bool LieNear(const TableColumn& column, const WeightedRows& rows) {
    if (rows.Rows == nullptr) {
        return true;
    }
    const auto span = static_cast<std::size_t>(rows.Rows[rows.Count - 1] - rows.Rows[0]) + 1;
    const std::size_t most = column.Form == ColumnForm::Doubles ? RowsPerHit : RowsPerHitOfCodes;
    return rows.Bits != nullptr && span <= rows.Count * most;
}

/// Draws the values of rows together that lie near each other, but for some of the last. Gives how many.
std::size_t DrawNearValues(const TableColumn& column, const WeightedRows& rows, double* values) {
    if (!LieNear(column, rows) || !HasRegisters(MomentRegisters::Widest) || !CanDrawTogether(column)) {
        return 0;
    }
    const auto end = static_cast<std::size_t>(rows.RowAt(rows.Count - 1)) + 1;
    return DrawTogether(column, rows.Rows == nullptr ? nullptr : rows.Bits, static_cast<std::size_t>(rows.RowAt(0)),
                        end, values);
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
        const double* values = column.As<double>() + rows.First;
        AskForNextValues(values, rows.Count);
        return values;
    }
    const std::size_t drawn = DrawNearValues(column, rows, room);
    const WeightedRows rest = rows.Part(drawn, rows.Count - drawn);
    if (doubles) {
        GatherDoubles(column.As<double>(), rest, room + drawn);
        return room;
    }
    WithValues(column, [&](auto valueOf) {
        for (std::size_t i = 0; i < rest.Count; ++i) {
            room[drawn + i] = valueOf(rest.RowAt(i));
        }
    });
    return room;
}
