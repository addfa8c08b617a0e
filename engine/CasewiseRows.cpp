#include "engine/CasewiseRows.h"

#include <algorithm>

using namespace drilldown;

CasewiseRows::Parts CasewiseRows::Split(const CaseColumns& block, const PassLayout& layout,
                                        std::span<const std::size_t> columns, const WeightedRows& rows) const {
    std::fill_n(IsMissing.data(), rows.Count, false);
    for (const std::size_t column : columns) {
        WithValues(block.Columns[column], [&](auto valueOf) {
            const NearlyEqualRange missing = layout.Missing[column];
            for (std::size_t i = 0; i < rows.Count; ++i) {
                IsMissing[i] |= missing.Contains(valueOf(rows.RowAt(i)));
            }
        });
    }
    std::size_t kept = 0;
    for (std::size_t i = 0; i < rows.Count; ++i) {
        const RowList& part = IsMissing[i] ? Deleted : Kept;
        const std::size_t place = IsMissing[i] ? i - kept : kept;
        part.Rows[place] = rows.RowAt(i);
        part.Weights[place] = rows.WeightAt(i);
        kept += IsMissing[i] ? 0 : 1;
    }
    if (kept == rows.Count) {
        return {rows, {}};
    }
    const bool weighted = rows.Weights != nullptr;
    return {{Kept.Rows.data(), weighted ? Kept.Weights.data() : nullptr, kept},
            {Deleted.Rows.data(), weighted ? Deleted.Weights.data() : nullptr, rows.Count - kept}};
}
