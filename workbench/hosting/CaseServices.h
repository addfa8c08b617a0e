#pragma once

#include <cstdint>

class CAnalysisDoc;
class CaseConditions;
class ParallelRuns;
class TableColumns;

namespace quillara {

/// The services for quick passes that an analysis is offered besides the cases themselves, each optional; they outlive
/// the analysis.
struct CaseServices {
    TableColumns* Columns = nullptr;
    CaseConditions* Conditions = nullptr;
    ParallelRuns* Threads = nullptr;
    std::uint64_t Revision = 0;  ///< of table, selection and weight; 0: not told
};

/// Those of a document; without a document none.
[[nodiscard]] CaseServices& CaseServicesOf(CAnalysisDoc* document);

}  // namespace quillara
