#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "engine/CaseDecisions.h"
#include "engine/DrillDown.h"
#include "engine/DrillFilter.h"
#include "engine/HostBuffer.h"
#include "engine/OutOfMemory.h"
#include "engine/VariableLists.h"
#include "host/CaseBlocks.h"
#include "resources/StringTable.h"

using namespace drilldown;

namespace {

constexpr int SubsetCode = 25;
constexpr std::size_t ShortNameWidth = 8;
constexpr std::size_t LongNameWidth = 128;
constexpr std::size_t ValueWidth = sizeof(double);

enum class ExportOutcome : std::uint8_t {
    Written,
    GivenUp,  ///< by the user or the host, or there is no column
    Failed,  ///< without memory, or a write was refused
};

struct ColumnCounts {
    int All;
    int Categorical;
};

bool IsDrillVariable(const CDrillDown& analysis, std::int16_t var) {
    const SelectionMembers& drill = Selections[DrillSide];
    const auto holds = [var](std::span<const std::int16_t> list) {
        return std::find(list.begin(), list.end(), var) != list.end();
    };
    return holds(drill.CategoricalOf(analysis)) || holds(drill.ContinuousOf(analysis));
}

int CountReviewedOnly(const CDrillDown& analysis, std::span<const std::int16_t> reviewed) {
    return static_cast<int>(std::count_if(reviewed.begin(), reviewed.end(),
                                          [&](std::int16_t var) { return !IsDrillVariable(analysis, var); }));
}

/// Intended: a variable that stands in both drill lists, or in both review lists, counts twice, unlike in the list of
/// the columns, which has it once; the columns left over come from no variable and hold zeros.
ColumnCounts CountColumns(const CDrillDown& analysis) {
    const SelectionMembers& review = Selections[ReviewSide];
    const int categorical = CountReviewedOnly(analysis, review.CategoricalOf(analysis));
    const int continuous = CountReviewedOnly(analysis, review.ContinuousOf(analysis));
    return {analysis.NoCategorical + analysis.NoContinuous + categorical + continuous,
            analysis.NoCategorical + categorical};
}

std::size_t CaseNameWidth(const CDrillDown& analysis) {
    return static_cast<std::size_t>(std::max<std::int16_t>(analysis.Names.CaseNameWidth, 0));
}

/// Work storage of an export.
struct ExportBuffers {
    ExportBuffers(CDrillDown& analysis, int columns)
        : Columns(static_cast<std::size_t>(columns)),
          NameWidth(CaseNameWidth(analysis)),
          Values(analysis, static_cast<std::size_t>(analysis.Table.Variables) + 2),
          Cells(analysis, static_cast<std::size_t>(analysis.Table.Variables) + 2),
          List(analysis, Columns + 1),
          Names(analysis, ShortNameWidth * (Columns + 1)),
          LongNames(analysis, LongNameWidth * (Columns + 1)),
          Row(analysis, NameWidth + ValueWidth * (Columns + 1)),
          Filter(analysis) {
        if (Row) {
            std::memset(Row.data(), 0xFF, NameWidth + ValueWidth * (Columns + 1));
        }
    }
    explicit operator bool() const { return Values && Cells && List && Names && LongNames && Row && Filter; }

    std::size_t Columns;  ///< number of columns of the new table
    std::size_t NameWidth;  ///< bytes of a case name, 0: no case names
    // Intended: what is written of a case is what the host reads as data, unlike what is tested, which is what the
    // table stores; hosts that read a case otherwise than it is stored depend on the test of the stored values.
    HostBuffer<double> Values;  ///< the case as it is written, by variable number
    HostBuffer<double> Cells;  ///< the same case as it is tested
    HostBuffer<std::int16_t> List;  ///< variables of the columns, ascending; 0: none
    HostBuffer<char> Names;
    HostBuffer<char> LongNames;
    HostBuffer<char> Row;  ///< one row of the new table
    CompiledFilter Filter;
};

void ListColumns(CDrillDown& analysis, const ExportBuffers& buffers) {
    std::size_t column = 0;
    for (int var = 1; var <= analysis.Table.Variables && column < buffers.Columns; ++var) {
        if (analysis.SelectedVariable(var) == 0) {
            continue;
        }
        analysis.getvn5(var, buffers.Names.data() + column * ShortNameWidth);
        analysis.WriteVarLongName(buffers.LongNames.data() + column * LongNameWidth, var);
        buffers.List[column++] = static_cast<std::int16_t>(var);
    }
}

/// The categorical variables among the columns of a new table.
struct CategoricalColumns {
    CategoricalColumns(CDrillDown& analysis, const ExportBuffers& buffers)
        : Places(analysis, buffers.Columns), Sources(analysis, buffers.Columns) {
        for (std::size_t column = 0; *this && column < buffers.Columns; ++column) {
            if (analysis.IsCategoricalVariable(buffers.List[column]) != 0) {
                Places[Count] = static_cast<std::int32_t>(column);
                Sources[Count++] = buffers.List[column] - 1;
            }
        }
    }
    explicit operator bool() const { return Places && Sources; }

    std::size_t Count = 0;
    HostBuffer<std::int32_t> Places;  ///< their columns, from 0
    HostBuffer<std::int32_t> Sources;  ///< their variable numbers less 1
};

/// A table of the host that is being written; it is dropped unless it is finished. The progress display ends with it.
class NewTable {
  public:
    explicit NewTable(CDrillDown& analysis) : Analysis(analysis) {}
    NewTable(const NewTable&) = delete;
    NewTable& operator=(const NewTable&) = delete;
    ~NewTable() {
        Analysis.ddstop();
        if (!Finished) {
            Analysis.AbortOutput(Handle);
        }
    }

    /// Begins the table; false without memory.
    [[nodiscard]] bool Begin(const ExportBuffers& buffers, int categoricals);
    /// Writes bytes behind those written before; false when the host refuses.
    [[nodiscard]] bool Put(const char* bytes, std::size_t length) {
        const std::uint32_t place = Position;
        Position += static_cast<std::uint32_t>(length);
        return Analysis.PutDataF(Handle, bytes, place, static_cast<int>(length)) == 0;
    }
    void Finish() {
        Analysis.ddstop();
        Analysis.MatClo(Handle);
        Finished = true;
    }

  private:
    CDrillDown& Analysis;
    short Handle = 0;
    std::uint32_t Position = 0;  ///< of the next write; starts again at 0 behind 4 GiB
    bool Finished = false;
};

bool NewTable::Begin(const ExportBuffers& buffers, int categoricals) {
    std::array<char, HeaderTextWidth> header{};
    std::copy_n(Analysis.Table.HeaderText, HeaderTextWidth, header.data());
    const auto create = [&](const auto&... columns) {
        // Intended: as many cases are announced as entered the last pass, unlike the rows that come, which also hold
        // cases without a positive weight; hosts depend on the announcement for room only.
        return Analysis.SubsetAndAddEx(SubsetCode, "", static_cast<int>(buffers.Columns), 0, buffers.List.data(),
                                       Analysis.ValidVar, buffers.Names.data(), buffers.LongNames.data(),
                                       static_cast<int>(LongNameWidth), header.data(),
                                       static_cast<int>(buffers.NameWidth), &Position, columns...);
    };
    // Intended: the short form where no categorical variable was counted, unlike the arrays, which hold every
    // categorical column; one that is a continuous drill variable too isn't counted.
    if (categoricals < 1) {
        Handle = create();
        return true;
    }
    const CategoricalColumns columns(Analysis, buffers);
    if (!columns) {
        return false;
    }
    Handle = create(columns.Places.data(), columns.Sources.data(), static_cast<int>(columns.Count));
    return true;
}

/// Reads a case as data, with its weight and name. Gives the host's result.
CaseResult ReadDataCase(CDrillDown& analysis, int caseNumber, double* values) {
    analysis.CaseLine = {};
    int weighted = 0;
    double weight = 0.0;
    int tag = 0;
    const auto result = static_cast<CaseResult>(analysis.cstart(caseNumber, values, &weighted, &weight, &tag));
    if (result == CaseResult::Use || result == CaseResult::Skip) {
        StoreCase(analysis, caseNumber, {weighted, weight, tag});
    }
    return result;
}

/// Whether a case goes into the new table.
/// Intended: neither its weight nor the casewise rule of the review variables plays a part, unlike in the passes; a
/// case of weight 0 is a case of the data.
bool Remains(CDrillDown& analysis, const ExportBuffers& buffers, int caseNumber) {
    for (int var = 1; var <= analysis.Table.Variables; ++var) {
        analysis.ReadTableValue(var - 1, caseNumber - 1, buffers.Cells.data() + var);
    }
    if (analysis.CasewiseDeletionOfMD == 1 && analysis.SetMissingData(buffers.Cells.data()) == 1) {
        return false;
    }
    return std::all_of(buffers.Filter.begin(), buffers.Filter.end(), [&](const CaseCondition& condition) {
        return condition.IsMetBy(buffers.Cells[static_cast<std::size_t>(condition.Variable)]);
    });
}

bool PutRow(const CDrillDown& analysis, NewTable& table, const ExportBuffers& buffers) {
    char* row = buffers.Row.data();
    char* values = row + buffers.NameWidth;
    std::memset(row, 0, buffers.NameWidth);  // a name field may be wider than the text line
    std::memcpy(row, analysis.CaseLine.Line, std::min(buffers.NameWidth, CaseLineWidth));
    for (std::size_t column = 0; column < buffers.Columns; ++column) {
        const auto var = static_cast<std::size_t>(buffers.List[column]);
        std::memcpy(values + column * ValueWidth, &buffers.Values[var], ValueWidth);
    }
    if (buffers.NameWidth != 0 && !table.Put(row, buffers.NameWidth)) {
        return false;
    }
    for (std::size_t column = 0; column < buffers.Columns; ++column) {
        if (!table.Put(values + column * ValueWidth, ValueWidth)) {
            return false;
        }
    }
    return true;
}

ExportOutcome PutCases(CDrillDown& analysis, NewTable& table, const ExportBuffers& buffers) {
    analysis.tdstar(analysis.Table.Cases, analysis.GetResourceString(ComputingText));
    for (int caseNumber = 1; caseNumber <= analysis.Table.Cases; ++caseNumber) {
        const CaseResult result = ReadDataCase(analysis, caseNumber, buffers.Values.data());
        if (result == CaseResult::Skip) {
            continue;
        }
        if (result == CaseResult::Stop || analysis.lookbr() != 0) {
            return ExportOutcome::GivenUp;
        }
        if (Remains(analysis, buffers, caseNumber) && !PutRow(analysis, table, buffers)) {
            return ExportOutcome::Failed;
        }
    }
    table.Finish();
    return ExportOutcome::Written;
}

ExportOutcome Export(CDrillDown& analysis, NewTable& table) {
    const ColumnCounts counts = CountColumns(analysis);
    if (counts.All < 1) {
        return ExportOutcome::GivenUp;
    }
    const ExportBuffers buffers(analysis, counts.All);
    if (!buffers) {
        return ExportOutcome::Failed;
    }
    ListColumns(analysis, buffers);
    if (!table.Begin(buffers, counts.Categorical)) {
        return ExportOutcome::Failed;
    }
    return PutCases(analysis, table, buffers);
}

}  // namespace

std::int16_t CDrillDown::DDNSaveData(HWND) {
    BringUpToDate();
    if (ValidVar == 0) {
        dsplst(0, GetResourceString(NoCasesText));
        return 0;
    }
    NewTable table(*this);
    const ExportOutcome outcome = Export(*this, table);
    if (outcome == ExportOutcome::Failed) {
        ReportNotEnoughMemory(*this);
    }
    return outcome == ExportOutcome::Written ? 1 : 0;
}
