#include "engine/CaseSource.h"

#include <algorithm>
#include <cstring>

using namespace drilldown;

namespace {

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

}  // namespace

CaseSource::CaseSource(CDrillDown& analysis, std::span<const std::int16_t> variables, std::int32_t blockSize)
    : Analysis(analysis),
      Variables(variables),
      BlockSize(std::min(blockSize, std::max(analysis.Table.Cases, 1))),
      Blocks(analysis.GetCaseBlocks()),
      CaseBuffer(analysis, static_cast<std::size_t>(analysis.Table.Variables) + 1),
      Gathered(analysis, Blocks != nullptr ? 1 : variables.size() * static_cast<std::size_t>(BlockSize) + 1),
      GatheredWeights(analysis, Blocks != nullptr ? 1 : static_cast<std::size_t>(BlockSize)),
      Columns(analysis, variables.size() + 1),
      HasMemory(CaseBuffer && Gathered && GatheredWeights && Columns) {
    if (!HasMemory || Blocks != nullptr) {
        return;
    }
    for (std::size_t i = 0; i < variables.size(); ++i) {
        Columns[i] = Gathered.data() + i * static_cast<std::size_t>(BlockSize);
    }
}

bool CaseSource::Next(CaseColumns& block) {
    if (Stopped || NextCase > Analysis.Table.Cases) {
        return false;
    }
    return Blocks != nullptr ? NextFromColumns(block) : NextFromCases(block);
}

bool CaseSource::NextFromColumns(CaseColumns& block) {
    const std::int32_t left = Analysis.Table.Cases - NextCase + 1;
    CaseBlock read;
    read.Columns = {Columns.data(), Variables.size()};
    Blocks->ReadBlock(NextCase, std::min(BlockSize, left), Variables, read);
    const std::int32_t rows = RowsBeforeStop(read);
    // A host that gives no case where some are left has ended the pass.
    Stopped = rows < read.Count || read.Count == 0;
    NextCase += read.Count;
    block = {rows, read.Results, read.Weights, Columns.data()};
    return read.Count > 0;
}

bool CaseSource::NextFromCases(CaseColumns& block) {
    std::int32_t rows = 0;
    while (rows < BlockSize && NextCase <= Analysis.Table.Cases && !Stopped) {
        rows += GatherCase(rows) ? 1 : 0;
        ++NextCase;
    }
    const bool weighted = Analysis.CaseWeight.Active != 0;
    block = {rows, nullptr, weighted ? GatheredWeights.data() : nullptr, Columns.data()};
    return true;
}

/// Reads the next case into a row of the block; false when it doesn't belong to the pass.
bool CaseSource::GatherCase(std::int32_t row) {
    std::fill_n(Analysis.CaseLine.Line, CaseLineWidth, '\0');
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
        Gathered[i * static_cast<std::size_t>(BlockSize) + static_cast<std::size_t>(row)] =
            CaseBuffer[static_cast<std::size_t>(Variables[i])];
    }
    return true;
}
