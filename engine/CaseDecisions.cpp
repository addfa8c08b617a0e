#include "engine/CaseDecisions.h"

#include <algorithm>
#include <string>

#include "engine/DrillDown.h"

using namespace drilldown;

namespace {

/// Longest case name that is copied into the text line.
constexpr int LongestCaseName = 218;

/// Writes the name of a case into the text line, at its column position.
void PlaceCaseName(b1_com& line, const std::string& name, int width) {
    const auto length = static_cast<int>(name.size());
    const auto lineWidth = static_cast<int>(CaseLineWidth);
    if (line.Column < 1 || line.Column + length > lineWidth) {
        line.Column = 1;
    }
    char* place = line.Line + (line.Column - 1);
    const int room = lineWidth - (line.Column - 1);
    std::fill_n(place, std::min(width, room), ' ');
    if (length >= 1 && length <= LongestCaseName) {
        std::copy_n(name.data(), length, place);
    }
}

bool AnyMissing(CDrillDown& analysis, const double* values, const std::int16_t* list, std::int16_t count) {
    return std::any_of(list, list + count, [&](std::int16_t var) {
        double code = 0.0;
        analysis.getmd5(var, &code);
        return NearlyEqual(values[var], code);
    });
}

}  // namespace

void drilldown::StoreCase(CDrillDown& analysis, int caseNumber, const CaseExtras& extras) {
    Wght_com& stored = analysis.CaseWeight;
    stored.Weighted = static_cast<std::int16_t>(extras.Weighted != 0 ? 1 : 0);
    stored.Weight = extras.Weight;
    stored.SingleWeight = static_cast<float>(extras.Weight);
    stored.CaseTag = static_cast<std::int16_t>(extras.Tag);
    const std::int16_t width = analysis.Names.CaseNameWidth;
    if (width != 0) {
        std::string name = analysis.GetCaseName(caseNumber - 1);
        if (static_cast<int>(name.size()) > width) {
            analysis.Get8CharHash(name);
        }
        PlaceCaseName(analysis.CaseLine, name, width);
    }
}

int CDrillDown::ReadCase(int caseNumber, double* values) {
    int weighted = 0;
    double weight = 0.0;
    int tag = 0;
    const int result = cstrtw(caseNumber, values, &weighted, &weight, &tag);
    if (result != 0 && result != 1) {
        return result;
    }
    StoreCase(*this, caseNumber, {weighted, weight, tag});
    return result;
}

double CDrillDown::DealWithWeights(unsigned short) const {
    return CountingWeight(WeightRuleOf(CaseWeight, WeightedMoments), CaseWeight.Weight);
}

int CDrillDown::SetMissingData(const double* values) {
    return AnyMissing(*this, values, Categorical, NoCategorical) || AnyMissing(*this, values, Continuous, NoContinuous);
}

int CDrillDown::MDReviews(const double* values) {
    return AnyMissing(*this, values, RVCategorical, NoRVCategorical) ||
           AnyMissing(*this, values, RVContinuous, NoRVContinuous);
}
