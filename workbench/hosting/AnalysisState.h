#pragma once

#include "workbench/data/DataTable.h"
#include "workbench/documents/Remarks.h"
#include "workbench/hosting/AllocationRecord.h"
#include "workbench/hosting/AnalysisServices.h"
#include "workbench/hosting/CaseServices.h"
#include "workbench/hosting/DialogState.h"
#include "workbench/hosting/DocumentSettings.h"
#include "workbench/hosting/NewTables.h"
#include "workbench/hosting/RoutedResults.h"
#include "workbench/hosting/StepHistory.h"
#include "workbench/hosting/Surroundings.h"
#include "workbench/hosting/TableCaseBlocks.h"
#include "workbench/hosting/TableInUse.h"
#include "workbench/hosting/TableServices.h"
#include "workbench/hosting/WorkerThreads.h"

namespace quillara {

/// All that a document keeps for its analysis, a part for each family of the calls of CAnalysisSupport. Only the
/// document, which owns it, includes this; who serves a family takes its part from the document by the function of the
/// part's header.
struct AnalysisState {
    AnalysisState(const DataTable& table, const AnalysisServices& services);
    AnalysisState(const AnalysisState&) = delete;
    AnalysisState& operator=(const AnalysisState&) = delete;
    ~AnalysisState();

    /// Offers the analysis every service for reading cases, or none.
    void OfferCaseServices(bool offered);

    DialogState Dialogs;
    Surroundings Around;
    TableInUse Data;
    AllocationRecord Memory;
    TableCaseBlocks Blocks;
    TableServices Whole;
    WorkerThreads Workers;
    CaseServices Quick;
    NewTables Tables;
    RoutedResults Results;
    DocumentSettings Settings;
    Remarks Noticed;  ///< of the table that is open
    StepHistory Steps;  ///< the same
};

/// The state of a document; without a document that of an empty table.
[[nodiscard]] AnalysisState& StateOf(CAnalysisDoc* document);

}  // namespace quillara
