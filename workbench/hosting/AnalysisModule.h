#pragma once

#include <memory>
#include <string>

#include "host/AnalysisSupport.h"

namespace quillara {

/// A plug-in with one analysis, opened with dlopen and entered through `Orv6NewAnalysis`. Analyses, and documents
/// that they listen to, must be destroyed before their module is.
class AnalysisModule {
  public:
    /// Opens the library; throws DataError saying why when that fails or when it has no entry.
    explicit AnalysisModule(const std::string& path);
    AnalysisModule(const AnalysisModule&) = delete;
    AnalysisModule& operator=(const AnalysisModule&) = delete;
    ~AnalysisModule();

    /// A new analysis without a document; throws DataError when the module gives none.
    [[nodiscard]] std::unique_ptr<CAnalysisSupport> NewAnalysis() const;

    /// The drill-down module beside this program or in the library folder it was installed into.
    [[nodiscard]] static std::string DrillDownPath();

  private:
    void* Library;
    CAnalysisSupport* (*Entry)();
};

}  // namespace quillara
