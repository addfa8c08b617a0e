#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "workbench/hosting/AnalysisServices.h"

class CAnalysisDoc;

namespace quillara {

struct DialogState;

/// The people and programs around an analysis, whichever of their services there are. What a script drives says its
/// messages to the script.
class Surroundings {
  public:
    /// The services and the dialogs outlive it.
    Surroundings(const AnalysisServices& services, const DialogState& dialogs) : Services(services), Dialogs(dialogs) {}

    /// Whether the user asks to cancel now.
    [[nodiscard]] bool AskForBreak() const;
    void Trace(std::string_view call) const;
    void ShowMessage(std::string_view text) const;
    /// Tells it where it matters: some results are left out without a message.
    void ReportMemoryLack() const;
    /// Shows a message of the host that memory is lacking, and reports it.
    void SayMemoryLacked(std::string_view text) const;

    // The display of a pass

    void StartProgress(std::int32_t total);
    /// How many cases are done; nothing while no pass runs.
    void ReportProgress(std::int32_t done) const;
    void EndProgress();

    std::string ProgressText;  ///< of the next pass

    const AnalysisServices& Services;

  private:
    const DialogState& Dialogs;
    bool IsPassing = false;
};

/// Those of a document; without a document nobody.
[[nodiscard]] Surroundings& SurroundingsOf(CAnalysisDoc* document);

}  // namespace quillara
