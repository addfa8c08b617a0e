#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "host/CaseConditions.h"
#include "host/ParallelRuns.h"
#include "host/TableColumns.h"
#include "workbench/hosting/AnalysisDocument.h"

namespace drilltest {

/// Which of the optional services for quick passes a host offers, and how it answers.
struct QuickServices {
    enum class Answer : std::uint8_t { None, Bits, Rows };

    bool HasColumns = true;
    Answer Conditions = Answer::Bits;
    std::int32_t Threads = 0;  ///< 0: none are offered
    std::int32_t BlockCases = 32768;
    bool TellsRevision = true;
};

/// The services over the table of a document: columns in the narrowest form that holds them, with codes in an order of
/// their own; conditions tested case by case; parts taken up by real threads.
class QuickHost : public TableColumns, public CaseConditions, public ParallelRuns {
  public:
    QuickHost(quillara::AnalysisDocument& document, const QuickServices& services);
    ~QuickHost() override;

    /// Table, selection or weight have changed.
    void Renew();

    bool FindColumn(std::int16_t variable, TableColumn& column) override;
    bool FindWeights(TableColumn& column) override;
    const CaseResult* Selection() override;
    std::int32_t BeginCases(std::int32_t first, std::int32_t count) override;
    std::int32_t CasesBetweenPolls() const override { return Services.BlockCases; }
    bool FindCases(std::span<const CaseCondition> conditions, CaseSubset& cases) override;
    std::int32_t Threads() const override { return Services.Threads; }
    std::int32_t CasesWorthSharing() const override { return 0; }
    void Run(std::int32_t parts, Part part, void* work) override;

  private:
    struct NarrowColumn;

    quillara::AnalysisDocument& Document;
    QuickServices Services;
    std::vector<std::unique_ptr<NarrowColumn>> Columns;  // of each variable, then of the weights
    std::vector<std::uint64_t> Bits;
    std::vector<std::int32_t> Rows;
};

}  // namespace drilltest
