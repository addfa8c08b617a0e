#pragma once

#include <cstdint>
#include <vector>

#include "host/CaseConditions.h"
#include "host/Charts.h"
#include "host/ResultSubject.h"
#include "platform/CountedPointer.h"
#include "workbench/data/RowSet.h"
#include "workbench/documents/OpenDocuments.h"
#include "workbench/documents/ResultDocument.h"

class CAnalysisDoc;

namespace quillara {

/// The cases that the plots of one command are made of.
struct KeptPlotRows {
    CaseFilter Filter = nullptr;  ///< null: none are kept
    std::uint64_t Command = 0;  ///< number of the command
    RowSet Rows;
};

/// The results of an analysis, on their way and behind it.
struct RoutedResults {
    ResultSubject NextSubject;  ///< what the analysis has said of its next result
    KeptPlotRows PlotRowsOfCommand;
    const std::vector<CaseCondition>* PlotConditions = nullptr;  ///< those of the filters; null: not told
    OpenDocuments Documents;
    CountedPointer<ResultDocument> Replaced;  ///< the document whose content the one that is being routed has replaced
    CountedPointer<ResultDocument> LastRouted;  ///< the document that went its normal way last
};

/// Those of a document; without a document none.
[[nodiscard]] RoutedResults& ResultsOf(CAnalysisDoc* document);

}  // namespace quillara
