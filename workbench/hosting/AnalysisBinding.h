#pragma once

#include "host/AnalysisSupport.h"

/// The host's way into an analysis: its document, its sequence and what its module shares with the host.
struct AnalysisBinding {
    static void Bind(CAnalysisSupport& analysis, CAnalysisDoc* document) { analysis.Document = document; }
    static const SequenceStep* Sequence(const CAnalysisSupport& analysis) { return analysis.Sequence; }
    static int SequenceRows(const CAnalysisSupport& analysis) { return analysis.SequenceRows; }
    static const CAnalysisContext& Context(const CAnalysisSupport& analysis) { return analysis.Context; }
};
