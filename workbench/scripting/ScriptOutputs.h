#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/CountedPointer.h"
#include "workbench/data/DataTable.h"
#include "workbench/documents/OpenDocuments.h"
#include "workbench/documents/OutputCollection.h"
#include "workbench/documents/ResultDocument.h"
#include "workbench/hosting/StepRecorder.h"

namespace quillara {

class AnalysisDocument;

/// What an analysis of a script makes and leaves open, with the steps before it. It outlives the analysis.
class ScriptOutputs final : public StepRecorder {
  public:
    /// From now on the results of every analysis that begins are kept until the program ends.
    static void KeepFromNowOn();
    /// Begins to keep those of an analysis: becomes its recorder and takes its documents. Null where none are kept.
    static std::shared_ptr<ScriptOutputs> Of(AnalysisDocument& analysis);
    /// Those of all analyses since KeepFromNowOn: a run for each of them and each table that was opened in it, as they
    /// began. Documents that the script has closed are left out.
    [[nodiscard]] static std::vector<OutputCollection> All();

    explicit ScriptOutputs(AnalysisDocument& analysis) : Analysis(&analysis) {}

    /// Keeps documents that the host has made itself, as a result of this name.
    void Keep(const std::vector<DocumentContent>& documents, const std::string& result);
    /// The table of the analysis is the same with more variables.
    void FollowTable();
    /// The analysis is about to close: what it has left open stays.
    void End();

    void RecordStep(CAnalysisDoc& /*document*/, const std::vector<RecordedValue>& /*values*/,
                    int /*control*/) override {}
    void RecordMethod(CAnalysisDoc& /*document*/, int /*control*/) override {}
    void RecordOutput(CAnalysisDoc& /*document*/, int /*control*/) override {}
    void EndCommand(CAnalysisDoc& /*document*/, int /*control*/) override { NoteCourse(); }

  private:
    struct KeptDocument {
        CountedPointer<ResultDocument> Document;
        int Step;  ///< of its content
        int EarlierPairs;  ///< of 3D histograms: documents of the step that other presses of the button have made
        bool StandsAlone;
        [[nodiscard]] bool IsOpen() const;
    };

    /// What is made of one table.
    struct Run {
        const DataTable* Table = nullptr;  // may have gone
        OutputCollection Shown;  // without its documents
        std::vector<KeptDocument> Documents;
        bool HasSettings = false;
    };

    Run& Present();
    void Take(ResultDocument& document, bool standsAlone);
    [[nodiscard]] static int EarlierPairs(const Run& run, const ResultDocument& document);
    void NoteSettings(Run& run) const;
    void NoteCourse();
    [[nodiscard]] static OutputCollection Finished(const Run& run);

    AnalysisDocument* Analysis;  // null once it has closed
    OpenDocuments OfHost;  // what the host has computed itself
    std::vector<Run> Runs;
};

}  // namespace quillara
