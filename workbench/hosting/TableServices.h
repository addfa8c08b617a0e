#pragma once

#include <cstdint>
#include <vector>

#include "host/CaseConditions.h"
#include "host/TableColumns.h"
#include "workbench/data/ConditionIndex.h"

class CAnalysisDoc;

namespace quillara {

class Surroundings;
class TableInUse;

/// The columns of a document's table as they lie in memory, and its cases that meet conditions.
class TableServices : public TableColumns, public CaseConditions {
  public:
    TableServices(const TableInUse& data, const Surroundings& around) : Data(data), Around(around) {}

    bool FindColumn(std::int16_t variable, TableColumn& column) override;
    bool FindWeights(TableColumn& column) override;
    const CaseResult* Selection() override;
    std::int32_t BeginCases(std::int32_t first, std::int32_t count) override;
    bool FindCases(std::span<const CaseCondition> conditions, CaseSubset& cases) override;

    /// The selected cases that meet all conditions, until the next call. Throws std::bad_alloc.
    [[nodiscard]] const RowSet& Find(std::span<const CaseCondition> conditions);
    /// Table or selection have changed.
    void Forget() { Index.Forget(); }

  private:
    const TableInUse& Data;
    const Surroundings& Around;
    ConditionIndex Index;
    std::vector<std::int32_t> Rows;
    std::vector<std::uint8_t> Zeros;
};

/// Those of a document; without a document of an empty table.
[[nodiscard]] TableServices& TableServicesOf(CAnalysisDoc* document);

}  // namespace quillara
