#pragma once

#include <cstdint>

#include "platform/Automation.h"

/// The host's owner of one analysis, as the analysis sees it.
class CAnalysisDoc {
  public:
    CAnalysisDoc() = default;
    CAnalysisDoc(const CAnalysisDoc&) = delete;
    CAnalysisDoc& operator=(const CAnalysisDoc&) = delete;

    /// The analysis forgets a result document; no failure, also when it doesn't know it.
    virtual void RemoveFromAnalysisList(IDispatch* document) = 0;

    /// The analysis as scripts see it, with a reference for the caller.
    HRESULT GetExternQlaAnalysisPointer(IDispatch** analysis);

    std::int32_t UpdateCounter = 0;  ///< above 0 while documents are being updated in place; raised by the analysis

  protected:
    virtual ~CAnalysisDoc() = default;
};
