#pragma once

#include <memory>
#include <string>

#include "host/AnalysisSupport.h"

class CAnalysisContext;

namespace quillara {

/// A plug-in with one analysis, opened with dlopen and entered through `Orv6NewAnalysis`. Analyses, and documents
/// that they listen to, must be destroyed before their module is. While scripts hold objects of the module its library
/// stays loaded; it is unloaded when a module begins or ends afterwards.
class AnalysisModule {
  public:
    /// Opens the library; throws DataError saying why when that fails or when it has no entry.
    explicit AnalysisModule(const std::string& path);
    AnalysisModule(const AnalysisModule&) = delete;
    AnalysisModule& operator=(const AnalysisModule&) = delete;
    ~AnalysisModule();

    /// A new analysis without a document; throws DataError when the module gives none.
    [[nodiscard]] std::unique_ptr<CAnalysisSupport> NewAnalysis();

    /// The drill-down module beside this program or in the library folder it was installed into.
    [[nodiscard]] static std::string DrillDownPath();

  private:
    void* Library;
    const CAnalysisContext* Context = nullptr;  // of the library; null until it has made an analysis
    CAnalysisSupport* (*Entry)();
};

}  // namespace quillara
