#include "workbench/exploration/ResultBases.h"

#include <algorithm>

#include "workbench/hosting/TableInUse.h"

namespace quillara {

CasesInForce CasesInForceOf(const TableInUse& data) {
    return {data.OthersOpened(), data.SelectionMark, data.IsWeighted ? data.WeightVariable : std::nullopt};
}

bool ResultBases::HasOther(const std::vector<CountedPointer<ResultDocument>>& documents,
                           const CasesInForce& now) const {
    return std::ranges::any_of(documents, [&](const auto& document) {
        const auto known = Known.find(document.Get());
        return known != Known.end() && known->second.Table == now.Table && known->second != now;
    });
}

}  // namespace quillara
