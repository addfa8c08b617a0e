#include "workbench/exploration/CaseArrangement.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <span>
#include <utility>

#include "platform/OrderedBits.h"

namespace quillara {
namespace {

using CaseRowNumbers = std::vector<std::uint32_t>;
using CaseKeys = std::vector<std::uint64_t>;

constexpr std::uint64_t KeyWithoutValue = std::numeric_limits<std::uint64_t>::max();
constexpr std::uint64_t SignBit = std::uint64_t{1} << 63;
constexpr std::size_t RowsBetweenQuestions = std::size_t{1} << 20;
constexpr unsigned DigitBits = 16;
constexpr std::size_t Digits = std::size_t{1} << DigitBits;

/// Rises with the value, or falls; that of a missing one is above all others.
std::uint64_t KeyOf(const Variable& variable, double value, bool isDescending) {
    if (variable.IsMissing(value)) {
        return KeyWithoutValue;
    }
    const std::uint64_t rising = static_cast<std::uint64_t>(OrderedBits(value)) ^ SignBit;
    return std::min(isDescending ? ~rising : rising, KeyWithoutValue - 1);
}

/// Of codes, places among the keys that there are do as well as these, and are short.
CaseKeys KeysOfCodes(const Variable& variable, bool isDescending) {
    CaseKeys keys;
    for (const double value : variable.Values.ValuesOfCodes()) {
        keys.push_back(KeyOf(variable, value, isDescending));
    }
    CaseKeys sorted = keys;
    std::ranges::sort(sorted);
    for (std::uint64_t& key : keys) {
        key = static_cast<std::uint64_t>(std::ranges::lower_bound(sorted, key) - sorted.begin());
    }
    return keys;
}

template <typename Code>
void TakeKeys(const Column& column, const CaseKeys& keysOfCodes, CaseKeys& keys) {
    const std::span codes(column.Stored().As<Code>(), column.size());
    std::ranges::transform(codes, std::back_inserter(keys), [&](Code code) { return keysOfCodes[code]; });
}

/// A key for each row of the table.
CaseKeys KeysOf(const Variable& variable, bool isDescending) {
    CaseKeys keys;
    keys.reserve(variable.Values.size());
    switch (variable.Values.Stored().Form) {
        case ColumnForm::Codes8:
            TakeKeys<std::uint8_t>(variable.Values, KeysOfCodes(variable, isDescending), keys);
            break;
        case ColumnForm::Codes16:
            TakeKeys<std::uint16_t>(variable.Values, KeysOfCodes(variable, isDescending), keys);
            break;
        default:
            VisitRuns(variable.Values, [&](std::span<const double> values) {
                for (const double value : values) {
                    keys.push_back(KeyOf(variable, value, isDescending));
                }
            });
    }
    return keys;
}

/// Puts rows in the order of one digit of their keys; false when cancelled.
bool SortByDigit(const CaseKeys& keys, unsigned shift, CaseRowNumbers& rows, CaseRowNumbers& room,
                 const std::function<bool()>& cancelled) {
    const auto digitOf = [&](std::uint32_t row) { return keys[row] >> shift & (Digits - 1); };
    std::vector<std::uint32_t> begins(Digits + 1);
    for (const std::uint32_t row : rows) {
        ++begins[digitOf(row) + 1];
    }
    if (std::ranges::find(begins, rows.size()) != begins.end()) {
        return true;  // all have the same
    }
    std::partial_sum(begins.begin(), begins.end(), begins.begin());
    for (std::size_t place = 0; place < rows.size(); ++place) {
        if (place % RowsBetweenQuestions == 0 && cancelled()) {
            return false;
        }
        room[begins[digitOf(rows[place])]++] = rows[place];
    }
    rows.swap(room);
    return true;
}

/// The lowest digit first: each pass leaves rows of equal digits as they stand.
bool SortByKeys(const CaseKeys& keys, CaseRowNumbers& rows, const std::function<bool()>& cancelled) {
    CaseRowNumbers room(rows.size());
    for (unsigned shift = 0; shift < 64; shift += DigitBits) {
        if (cancelled() || !SortByDigit(keys, shift, rows, room, cancelled)) {
            return false;
        }
    }
    return true;
}

CaseRowNumbers RowsOf(std::size_t cases, const RowSet* kept) {
    CaseRowNumbers rows;
    if (kept == nullptr) {
        rows.resize(cases);
        std::iota(rows.begin(), rows.end(), 0U);
        return rows;
    }
    rows.reserve(kept->Count());
    kept->ForEach([&](std::size_t row) { rows.push_back(static_cast<std::uint32_t>(row)); });
    return rows;
}

}  // namespace

std::optional<CaseArrangement> CaseArrangement::Of(const DataTable& table, const CaseOrder& order, const RowSet* kept,
                                                   const std::function<bool()>& cancelled) {
    CaseArrangement arranged(table);
    if (!order.Variable && kept == nullptr) {
        return arranged;
    }
    arranged.IsPlain = false;
    arranged.Rows = RowsOf(arranged.Cases, kept);
    if (order.Variable) {
        const CaseKeys keys = KeysOf(table.Variables.at(*order.Variable), order.IsDescending);
        if (!SortByKeys(keys, arranged.Rows, cancelled)) {
            return std::nullopt;
        }
    }
    return arranged;
}

std::optional<std::size_t> CaseArrangement::PlaceOf(std::size_t row) const {
    if (IsPlain) {
        return row < Cases ? std::optional(row) : std::nullopt;
    }
    const auto found = std::ranges::find(Rows, static_cast<std::uint32_t>(row));
    return found == Rows.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - Rows.begin()));
}

}  // namespace quillara
