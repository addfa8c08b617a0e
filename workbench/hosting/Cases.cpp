#include "host/AnalysisSupport.h"
#include "workbench/hosting/AnalysisState.h"

using quillara::AnalysisState;
using quillara::DataTable;

namespace {

constexpr std::int32_t CasesPerProgressReport = 1024;

void FillValues(const DataTable& table, std::size_t row, double* values) {
    for (const quillara::Variable& variable : table.Variables) {
        *++values = variable.Values[row];
    }
}

}  // namespace

int CAnalysisSupport::cstrtw(int caseNumber, double* values, int* weighted, double* weight, int* tag) {
    const AnalysisState& state = quillara::StateOf(Document);
    if (caseNumber < 1 || caseNumber > state.Table().Cases) {
        return static_cast<int>(CaseResult::Stop);
    }
    const auto row = static_cast<std::size_t>(caseNumber) - 1;
    FillValues(state.Table(), row, values);
    *weighted = state.Data.Weights != nullptr ? 1 : 0;
    *weight = state.Data.Weights != nullptr ? state.Data.Weights[row] : 1.0;
    *tag = 0;
    if (caseNumber % CasesPerProgressReport == 0 || caseNumber == state.Table().Cases) {
        state.ReportProgress(caseNumber);
    }
    return static_cast<int>(state.Data.ResultOf(caseNumber));
}

int CAnalysisSupport::cstart(int caseNumber, double* values, int* weighted, double* weight, int* tag) {
    return cstrtw(caseNumber, values, weighted, weight, tag);
}

void CAnalysisSupport::ReadTableValue(int variableIndex, int caseIndex, double* value) {
    const DataTable& table = quillara::TableOf(Document).Table();
    *value = table.Variables[static_cast<std::size_t>(variableIndex)].Values[static_cast<std::size_t>(caseIndex)];
}

std::string CAnalysisSupport::GetCaseName(int caseIndex) {
    const auto& names = quillara::TableOf(Document).Table().CaseNames;
    const bool known = caseIndex >= 0 && static_cast<std::size_t>(caseIndex) < names.size();
    return known ? names[static_cast<std::size_t>(caseIndex)] : std::string();
}

CaseBlocks* CAnalysisSupport::GetCaseBlocks() {
    AnalysisState& state = quillara::StateOf(Document);
    return Document != nullptr && state.BlocksOffered ? &state.Blocks : nullptr;
}
