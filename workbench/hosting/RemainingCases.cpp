#include "workbench/hosting/RemainingCases.h"

#include <new>
#include <vector>

#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/TableServices.h"

namespace quillara {

const RowSet* RemainingCases(AnalysisDocument& document) {
    try {
        std::vector<CaseCondition> conditions;
        return document.Analysis().FindStepConditions(conditions) ? &TableServicesOf(&document).Find(conditions)
                                                                  : nullptr;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

}  // namespace quillara
