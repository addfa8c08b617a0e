#include "results/graphs/GraphTexts.h"

#include <array>
#include <cstddef>

#include "engine/DrillDown.h"
#include "results/tables/ResultTexts.h"

namespace {

constexpr std::size_t LongNameSize = 128;

}  // namespace

std::string VariableLabel(CDrillDown& analysis, std::int16_t var) {
    std::string label = NameField(analysis, var);
    std::array<char, LongNameSize> longName{};
    analysis.WriteVarLongName(longName.data(), var);
    if (longName[0] != '\0') {
        label.append(": ").append(longName.data());
    }
    return label;
}

std::string VariableTitle(CDrillDown& analysis, int textId, std::int16_t var) {
    const std::string text = analysis.GetResourceString(textId);
    const std::string label = VariableLabel(analysis, var);
    std::string title = text.find("%s") == std::string::npos ? text + label : FillFormat(text, {label});
    analysis.Get8CharHash(title);
    return title;
}

const char* CountsCaption(CDrillDown& analysis) {
    return analysis.GetResourceString(analysis.CaseWeight.Active != 0 ? WeightedCountsCaptionText : CountsCaptionText);
}
