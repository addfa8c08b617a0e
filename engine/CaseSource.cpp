#include "engine/CaseSource.h"

#include <algorithm>
#include <cstring>

using namespace drilldown;

namespace {

/// Cases gathered one at a time, or read as doubles, before they are counted: the columns of a dozen variables stay in
/// the second cache.
constexpr std::int32_t CasesGathered = 1024;

/// Doubles from one gathered column to the next: were it a power of two, all values of a case would lie in the same few
/// places of the first cache.
constexpr std::size_t GatheredStride = static_cast<std::size_t>(CasesGathered) + 8;

/// Copied before each case: compilers fill so many bytes by an instruction that takes a fifth of the time of a case.
constexpr char EmptyLine[CaseLineWidth] = {};

/// Rows before the first one at which the pass must stop.
std::int32_t RowsBeforeStop(const CaseBlock& block) {
    if (block.Results == nullptr) {
        return block.Count;
    }
    const auto count = static_cast<std::size_t>(block.Count);
    const void* stop = std::memchr(block.Results, static_cast<int>(CaseResult::Stop), count);
    return stop == nullptr ? block.Count
                           : static_cast<std::int32_t>(static_cast<const CaseResult*>(stop) - block.Results);
}

/// A column without its first entries.
TableColumn From(TableColumn column, std::int32_t row) {
    static constexpr std::size_t widths[] = {sizeof(double), sizeof(std::int32_t), sizeof(std::uint8_t),
                                             sizeof(std::uint16_t)};
    const std::size_t offset = static_cast<std::size_t>(row) * widths[static_cast<std::size_t>(column.Form)];
    column.Entries = static_cast<const std::byte*>(column.Entries) + offset;
    return column;
}

/// Whether a host's column has what its form needs.
bool IsReadable(const TableColumn& column) {
    const bool isCoded = column.Form == ColumnForm::Codes8 || column.Form == ColumnForm::Codes16;
    return column.Entries != nullptr && (!isCoded || (column.Values != nullptr && column.ValueCount > 0));
}

/// Cases of a host's block that can be read: no more than were asked for, and none without all columns.
std::int32_t ReadableCases(const CaseBlock& block, std::int32_t asked, std::size_t columns) {
    const bool isWhole = block.Columns.size() == columns &&
                         std::ranges::none_of(block.Columns, [](const double* column) { return column == nullptr; });
    return isWhole ? std::clamp(block.Count, 0, asked) : 0;
}

TableColumn Doubles(const double* values) {
    return {ColumnForm::Doubles, values, nullptr, 0};
}

}  // namespace

CaseSource::CaseSource(CDrillDown& analysis, std::span<const std::int16_t> variables)
    : Analysis(analysis),
      Variables(variables),
      LastCase(analysis.Table.Cases),
      Columns(analysis, variables.size() + 1),
      Whole(analysis, variables.size() + 1),
      Table(FindWholeColumns()),
      CasesAtATime(Table == nullptr ? 1 : std::clamp(Table->CasesBetweenPolls(), 1, std::max(LastCase, 1))),
      Blocks(Table == nullptr ? analysis.GetCaseBlocks() : nullptr),
      BlockColumns(analysis, variables.size() + 1),
      CaseBuffer(analysis, static_cast<std::size_t>(analysis.Table.Variables) + 1),
      Gathered(analysis, GatheredRoom(variables.size())),
      GatheredWeights(analysis, GatheredRoom(1)),
      HasMemory(Columns && Whole && BlockColumns && CaseBuffer && Gathered && GatheredWeights) {}

TableColumns* CaseSource::FindWholeColumns() {
    TableColumns* table = Analysis.GetTableColumns();
    bool found = table != nullptr && Columns && Whole && table->FindWeights(WholeWeights) &&
                 (WholeWeights.Entries == nullptr || IsReadable(WholeWeights));
    for (std::size_t i = 0; i < Variables.size() && found; ++i) {
        found = table->FindColumn(Variables[i], Whole[i]) && IsReadable(Whole[i]);
    }
    return found ? table : nullptr;
}

std::size_t CaseSource::GatheredRoom(std::size_t columns) const {
    return Table == nullptr && Blocks == nullptr ? columns * GatheredStride + 1 : 1;
}

void CaseSource::ReadAgainUpTo(std::int32_t lastCase) {
    LastCase = lastCase;
    IsRepeated = true;
}

bool CaseSource::Next(CaseColumns& block, std::int32_t most) {
    if (Stopped || NextCase > LastCase) {
        return false;
    }
    const std::int32_t count = std::min(most, LastCase - NextCase + 1);
    if (Table != nullptr) {
        NextFromTable(block, count);
    } else if (Blocks != nullptr) {
        NextFromBlocks(block, std::min(count, CasesGathered));
    } else {
        NextFromCases(block, std::min(count, CasesGathered));
    }
    return block.Count > 0 || !Stopped;
}

void CaseSource::NextFromTable(CaseColumns& block, std::int32_t count) {
    const std::int32_t rows = IsRepeated ? count : std::clamp(Table->BeginCases(NextCase, count), 0, count);
    const std::int32_t first = NextCase - 1;
    for (std::size_t i = 0; i < Variables.size(); ++i) {
        Columns[i] = From(Whole[i], first);
    }
    const CaseResult* selection = Table->Selection();
    block = {rows, first, selection == nullptr ? nullptr : selection + first,
             WholeWeights.Entries == nullptr ? WholeWeights : From(WholeWeights, first), Columns.data()};
    Stopped = rows < count;
    NextCase += rows;
}

void CaseSource::NextFromBlocks(CaseColumns& block, std::int32_t count) {
    CaseBlock read;
    read.Columns = {BlockColumns.data(), Variables.size()};
    Blocks->ReadBlock(NextCase, count, Variables, read);
    read.Count = ReadableCases(read, count, Variables.size());
    const std::int32_t rows = RowsBeforeStop(read);
    for (std::size_t i = 0; i < Variables.size(); ++i) {
        Columns[i] = Doubles(read.Columns[i]);
    }
    block = {rows, NextCase - 1, read.Results, Doubles(read.Weights), Columns.data()};
    // A host that gives no case where some are left has ended the pass.
    Stopped = rows < read.Count || read.Count == 0;
    NextCase += rows;
}

void CaseSource::NextFromCases(CaseColumns& block, std::int32_t count) {
    std::int32_t rows = 0;
    while (rows < count && NextCase <= LastCase && !Stopped) {
        rows += GatherCase(rows) ? 1 : 0;
        ++NextCase;
    }
    for (std::size_t i = 0; i < Variables.size(); ++i) {
        Columns[i] = Doubles(Gathered.data() + i * GatheredStride);
    }
    const bool weighted = Analysis.CaseWeight.Active != 0;
    block = {rows, -1, nullptr, Doubles(weighted ? GatheredWeights.data() : nullptr), Columns.data()};
}

/// Reads the next case into a row of the block; false when it doesn't belong to the pass.
bool CaseSource::GatherCase(std::int32_t row) {
    std::memcpy(Analysis.CaseLine.Line, EmptyLine, CaseLineWidth);
    Analysis.CaseLine.Column = 1;
    const int result = Analysis.ReadCase(NextCase, CaseBuffer.data());
    if (result == static_cast<int>(CaseResult::Skip)) {
        return false;
    }
    if (result == static_cast<int>(CaseResult::Stop) || Analysis.lookbr() != 0) {
        Stopped = true;
        return false;
    }
    GatheredWeights[static_cast<std::size_t>(row)] = Analysis.CaseWeight.Weight;
    for (std::size_t i = 0; i < Variables.size(); ++i) {
        Gathered[i * GatheredStride + static_cast<std::size_t>(row)] =
            CaseBuffer[static_cast<std::size_t>(Variables[i])];
    }
    return true;
}
