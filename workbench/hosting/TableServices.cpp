#include "workbench/hosting/TableServices.h"

#include <new>

#include "workbench/hosting/Surroundings.h"
#include "workbench/hosting/TableCaseBlocks.h"
#include "workbench/hosting/TableInUse.h"

namespace quillara {
namespace {

/// A list of rows is shorter than the bits, and quicker to go through, where fewer than one in so many remain.
constexpr std::size_t SparseCases = 64;

constexpr double Zero = 0.0;

}  // namespace

bool TableServices::FindColumn(std::int16_t variable, TableColumn& column) {
    if (const Variable* known = Data.Find(variable)) {
        column = known->Values.Stored();
        return true;
    }
    try {
        Zeros.resize(static_cast<std::size_t>(Data.Table().Cases));
    } catch (const std::bad_alloc&) {
        return false;
    }
    column = {ColumnForm::Codes8, Zeros.data(), &Zero, 1};
    return true;
}

bool TableServices::FindWeights(TableColumn& column) {
    column = Data.Weights.Stored();
    return true;
}

const CaseResult* TableServices::Selection() {
    return Data.Selection.empty() ? nullptr : Data.Selection.data();
}

std::int32_t TableServices::BeginCases(std::int32_t first, std::int32_t count) {
    const std::int32_t before = CasesBeforeBreak(Data, Around, first, count);
    Around.ReportProgress(first + count - 1);
    return before;
}

const RowSet& TableServices::Find(std::span<const CaseCondition> conditions) {
    return Index.Find(Data.Table(), Data.Selection, conditions);
}

bool TableServices::FindCases(std::span<const CaseCondition> conditions, CaseSubset& cases) {
    try {
        const RowSet& found = Find(conditions);
        const std::size_t count = found.Count();
        cases = {found.Bits().data(), nullptr, static_cast<std::int32_t>(count)};
        if (count * SparseCases < found.TableRows()) {
            Rows.clear();
            Rows.reserve(count);
            found.ForEach([this](std::size_t row) { Rows.push_back(static_cast<std::int32_t>(row)); });
            cases.Bits = nullptr;
            cases.Rows = Rows.data();
        }
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

}  // namespace quillara
