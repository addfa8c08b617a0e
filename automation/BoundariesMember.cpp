// The member for the boundaries of user-specified categories.

#include <array>
#include <charconv>

#include "automation/OwnMembers.h"
#include "dialogs/DefineTask.h"
#include "host/LittleParser.h"
#include "host/ScriptValues.h"

namespace drilldown {
namespace {

/// A number with six decimals at most.
std::string BoundaryText(double value) {
    constexpr int decimals = 6;
    std::array<char, 400> field{};  // room for the largest number
    const auto end = std::to_chars(field.begin(), field.end(), value, std::chars_format::fixed, decimals).ptr;
    std::string text(field.begin(), end);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) {
        text.pop_back();
    }
    return text;
}

}  // namespace

HRESULT ReadUserDefinedBoundaries(CDefineTask& task, std::string& text) {
    const CDrillDown& analysis = *task.Analysis;
    if (analysis.GetCurrentMethod() != UserIntervals || analysis.GetCurrentNU() < 1) {
        return E_FAIL;
    }
    for (int i = 0; i < analysis.GetCurrentNU(); ++i) {
        text += ' ' + BoundaryText(analysis.GetUserInterv()[i]);
    }
    return S_OK;
}

// Intended: neither order nor number of the boundaries is looked at, and nothing is counted anew, unlike in the dialog;
// scripts write them before the categorization is chosen, and the next press applies both.
HRESULT WriteUserDefinedBoundaries(CDefineTask& task, const VARIANT& value) {
    std::string text;
    if (VariantToTextList(value, text)) {
        CleanText(task, text);
    }
    if (text.empty()) {
        return E_FAIL;
    }
    std::array<double, UserBoundaryRoom> boundaries{};
    std::size_t count = 0;
    CLittleParser parser(1, text.c_str(), nullptr, 0);
    int symbol = parser.GetSymbol();
    for (; symbol == CLittleParser::Number && count < boundaries.size(); symbol = parser.GetSymbol()) {
        boundaries[count++] = parser.GetLastDouble();
    }
    if (symbol != CLittleParser::End) {
        return E_FAIL;
    }
    task.Analysis->SetUserIntervals(boundaries.data(), static_cast<int>(count));
    return S_OK;
}

}  // namespace drilldown
