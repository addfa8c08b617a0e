#pragma once

#include <cstdint>

#include "host/CaseBlocks.h"

// Optional service of a host: whole columns as they lie in memory, in their narrow form. It goes beside or in place of
// CaseBlocks, which has every column as doubles. Results are the same to the last bit as reading case by case gives; a
// pass through columns leaves the line of case text and the weight of the last case as they are, as one through blocks
// does.

/// How a column holds its values.
enum class ColumnForm : std::uint8_t {
    Doubles,  ///< double: the values
    Integers,  ///< std::int32_t: whole values
    Codes8,  ///< std::uint8_t: places in a table of values
    Codes16,  ///< std::uint16_t: places in a table of values
};

/// One column of the table, an entry per case. A missing value stands in it as the missing code of its variable, like
/// any other value. The host owns the arrays.
struct TableColumn {
    ColumnForm Form = ColumnForm::Doubles;
    const void* Entries = nullptr;
    const double* Values = nullptr;  ///< of codes: the value of each, in any order; values may repeat or be unused
    std::int32_t ValueCount = 0;  ///< of codes: their number; every entry lies below it, which isn't tested

    /// The entries as what Form says.
    template <typename T>
    [[nodiscard]] const T* As() const noexcept {
        return static_cast<const T*>(Entries);
    }
    /// The value of a case, counted from 0.
    [[nodiscard]] double At(std::int32_t row) const noexcept {
        switch (Form) {
            case ColumnForm::Integers:
                return As<std::int32_t>()[row];
            case ColumnForm::Codes8:
                return Values[As<std::uint8_t>()[row]];
            case ColumnForm::Codes16:
                return Values[As<std::uint16_t>()[row]];
            case ColumnForm::Doubles:
                break;
        }
        return As<double>()[row];
    }
};

/// Implemented by the host, used by the module. Calls come on the host's one thread. What they give stays valid and
/// unchanged until table, selection or weight change, which they don't while a pass runs, and may be read by several
/// threads at once (host/ParallelRuns.h).
/// Columns may lie in a mapped file of any size: a pass reads them once from the first case to the last, and none that
/// isn't asked for.
class TableColumns {
  public:
    virtual ~TableColumns() = default;

    /// Gives the column of a variable, numbered from 1, as many entries as the table has cases. False when the host
    /// can't (no memory), which entries or values of codes that are null come to as well: the module then reads all of
    /// the pass by another service. A variable that isn't in the table has zeros.
    [[nodiscard]] virtual bool FindColumn(std::int16_t variable, TableColumn& column) = 0;
    /// Gives the stored weights as a column; Entries null: no weight is in force. False, and the same as false, as
    /// above.
    [[nodiscard]] virtual bool FindWeights(TableColumn& column) = 0;
    /// Use or Skip per case; null: every case is Use.
    [[nodiscard]] virtual const CaseResult* Selection() = 0;
    /// Told before cases first .. first + count - 1 (numbered from 1, in order, at least one) are counted; shows
    /// progress, and polls for a cancel by the user as often as lookbr would be called: once for each case to use, up
    /// to the one that gives yes. Gives the number of cases before that one, from 0; `count` when none does, as does
    /// more. Where few or no cases are counted, `count` is up to 1,048,576.
    [[nodiscard]] virtual std::int32_t BeginCases(std::int32_t first, std::int32_t count) = 0;
    /// How many cases are counted between two such calls at most, where they aren't left out; at least 1. More make
    /// better use of several threads, fewer notice a cancel sooner. Asked once a pass.
    [[nodiscard]] virtual std::int32_t CasesBetweenPolls() const { return 32768; }
};
