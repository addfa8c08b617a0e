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
    for (std::size_t i = 0; i < std::min(variables.size(), block.Columns.size()); ++i) {
        block.Columns[i] = ColumnFrom(first, block.Count, variables[i]);
    }
    if (Data.Weights != nullptr) {
        block.Weights = Data.Weights + offset;
    }
    if (!Data.Selection.empty()) {
        block.Results = Data.Selection.data() + offset;
    }
    const std::int32_t stop = CasesBeforeBreak(first, block.Count);
    if (stop < block.Count) {
        block.Results = ResultsWithStop(first, block.Count, stop);
    }
    Around.ReportProgress(first + block.Count - 1);
}

const double* TableCaseBlocks::ColumnFrom(std::int32_t first, std::int32_t count, std::int16_t variable) {
    if (const Variable* known = Data.Find(variable)) {
        return known->Values.data() + first - 1;
    }
    if (Zeros.size() < static_cast<std::size_t>(count)) {
        Zeros.resize(static_cast<std::size_t>(count));
    }
    return Zeros.data();
}

/// Polls as reading case by case would: once for each case to use, until the answer is yes.
std::int32_t TableCaseBlocks::CasesBeforeBreak(std::int32_t first, std::int32_t count) const {
    const AnalysisServices& services = Around.Services;
    const bool flagged = services.BreakFlag != nullptr && services.BreakFlag->load(std::memory_order_relaxed);
    if (!flagged && !services.BreakRequested) {
        return count;
    }
    for (std::int32_t i = 0; i < count; ++i) {
        if (Data.ResultOf(first + i) == CaseResult::Use && (flagged || services.BreakRequested())) {
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
