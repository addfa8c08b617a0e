#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/ResultSubject.h"
#include "workbench/data/Remark.h"
#include "workbench/documents/Remarks.h"
#include "workbench/documents/StepTaken.h"
#include "workbench/documents/Subject.h"

class CAnalysisDoc;

namespace quillara {

class AnalysisDocument;
struct Variable;

/// Makes a remark on the analysis of a document; who listens hears it once.
void Notice(CAnalysisDoc* document, Remark remark);

/// Remarks on formulas that it begins with or is given.
void Notice(CAnalysisDoc* document, const std::vector<Remark>& notices);
/// Remarks on what is in force when results are made: weights that aren't positive or are rounded, a declared weight
/// that isn't used.
void NoticeWeights(AnalysisDocument& document);
/// Remarks on cases that a weight leaves out, and on a declared weight that isn't used.
void NoticeWeightless(AnalysisDocument& document);
/// Remarks on a result that counts no weights under a weight, by its name.
void NoticeUnweighted(CAnalysisDoc* document, std::string_view result);
/// Remarks on a result of categories: values that the analysis leaves out or counts in the first interval all the same.
void NoticeCategories(CAnalysisDoc* document, const ResultSubject& subject);
/// Remarks on a variable that is to have a category for each value, or each whole one, and has too many of them.
void NoticeDistinct(AnalysisDocument& document, const Variable& variable, bool onlyWhole);
/// Remarks on a chart, named by `what`, that leaves out some cases for want of values.
void NoticeLeftOut(CAnalysisDoc* document, const std::string& what, std::int64_t leftOut);
/// Remarks on the newest step: what it drops for want of a value.
void NoticeStep(AnalysisDocument& document, const StepTaken& step);

/// How results of the analysis itself take the weight.
[[nodiscard]] WeightUse WeightUseNow(CAnalysisDoc* document);

/// The remarks on it so far.
[[nodiscard]] const Remarks& RemarksOn(CAnalysisDoc* document);

}  // namespace quillara
