#include "workbench/hosting/WeightsInForce.h"

#include "workbench/hosting/TableInUse.h"

namespace quillara {

CaseWeights WeightsInForce(const TableInUse& data) {
    if (data.Weights.empty() || !data.WeightVariable) {
        return {};
    }
    return {data.Weights, data.Table().Variables[*data.WeightVariable].Name};
}

}  // namespace quillara
