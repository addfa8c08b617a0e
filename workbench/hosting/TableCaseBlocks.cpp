#include "workbench/hosting/TableCaseBlocks.h"

#include <algorithm>

#include "workbench/hosting/Surroundings.h"
#include "workbench/hosting/TableInUse.h"

namespace quillara {

TableCaseBlocks::TableCaseBlocks(const TableInUse& data, const Surroundings& around) : Data(data), Around(around) {}

void TableCaseBlocks::ReadBlock(std::int32_t first, std::int32_t count, std::span<const std::int16_t> variables,
                                CaseBlock& block) {
    const std::int32_t cases = Data.Table().Cases;
    block.Count = first >= 1 && first <= cases ? std::clamp(count, 0, cases - first + 1) : 0;
    block.Results = nullptr;
    block.Weights = nullptr;
    if (block.Count == 0) {
        return;
    }
    const auto offset = static_cast<std::size_t>(first) - 1;
    const auto rows = static_cast<std::size_t>(block.Count);
    const std::size_t columns = std::min(variables.size(), block.Columns.size());
    Rooms.resize(std::max(Rooms.size(), columns + 1));
    for (std::size_t i = 0; i < columns; ++i) {
        const Variable* known = Data.Find(variables[i]);
        block.Columns[i] = known == nullptr ? ZerosFor(rows) : RunOf(known->Values, offset, rows, i + 1);
    }
    if (!Data.Weights.empty()) {
        block.Weights = RunOf(Data.Weights, offset, rows, 0);
    }
    if (!Data.Selection.empty()) {
        block.Results = Data.Selection.data() + offset;
    }
    const std::int32_t stop = CasesBeforeBreak(Data, Around, first, block.Count);
    if (stop < block.Count) {
        block.Results = ResultsWithStop(first, block.Count, stop);
    }
    Around.ReportProgress(first + block.Count - 1);
}

const double* TableCaseBlocks::RunOf(const Column& column, std::size_t first, std::size_t count, std::size_t room) {
    if (const std::span<const double> doubles = column.Doubles(); !doubles.empty()) {
        return doubles.data() + first;
    }
    std::vector<double>& values = Rooms[room];
    values.resize(std::max(values.size(), count));
    return column.Run(first, std::span(values).first(count)).data();
}

const double* TableCaseBlocks::ZerosFor(std::size_t count) {
    Zeros.resize(std::max(Zeros.size(), count));
    return Zeros.data();
}

std::int32_t CasesBeforeBreak(const TableInUse& data, const Surroundings& around, std::int32_t first,
                              std::int32_t count) {
    const AnalysisServices& services = around.Services;
    const bool flagged = services.BreakFlag != nullptr && services.BreakFlag->load(std::memory_order_relaxed);
    if (!flagged && !services.BreakRequested) {
        return count;
    }
    for (std::int32_t i = 0; i < count; ++i) {
        if (data.ResultOf(first + i) == CaseResult::Use && (flagged || services.BreakRequested())) {
            return i;
        }
    }
    return count;
}

const CaseResult* TableCaseBlocks::ResultsWithStop(std::int32_t first, std::int32_t count, std::int32_t stop) {
    Results.clear();
    for (std::int32_t i = 0; i < count; ++i) {
        Results.push_back(Data.ResultOf(first + i));
    }
    Results[static_cast<std::size_t>(stop)] = CaseResult::Stop;
    return Results.data();
}

}  // namespace quillara
