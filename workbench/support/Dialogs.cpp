#include <algorithm>

#include "host/AnalysisSupport.h"
#include "workbench/support/AnalysisState.h"
#include "workbench/support/LongTexts.h"

using quillara::AnalysisState;
using quillara::VariableListRequest;
using quillara::VariableLists;

namespace {

/// How many entries a list may have.
struct Limits {
    int Lowest;
    int Highest;

    [[nodiscard]] bool Allow(std::size_t count) const {
        return count <= INT16_MAX && static_cast<int>(count) >= Lowest && static_cast<int>(count) <= Highest;
    }
};

bool AreVariables(const std::vector<short>& list, const AnalysisState& state) {
    return list.size() <= state.Table.Variables.size() &&
           std::all_of(list.begin(), list.end(), [&](short number) { return state.FindVariable(number) != nullptr; });
}

void WriteList(const std::vector<short>& numbers, short* list, short* count) {
    std::copy(numbers.begin(), numbers.end(), list);
    *count = static_cast<short>(numbers.size());
}

std::string TextOrNothing(const char* text) {
    return text == nullptr ? "" : text;
}

}  // namespace

void CAnalysisSupport::dsplst(int length, const char* text) {
    const AnalysisState& state = CAnalysisDoc::StateOf(Document);
    if (state.Services.ShowMessage) {
        const std::string_view whole(text);
        const std::string_view shown = length > 0 ? whole.substr(0, static_cast<std::size_t>(length)) : whole;
        state.Services.ShowMessage(quillara::Replace8CharGrow(shown));
    }
}

int CAnalysisSupport::DoubleVarListDialog(HWND /*owner*/, unsigned short /*mode*/, const char* title, short* /*preset*/,
                                          int lowest1, int highest1, int lowest2, int highest2, int highestTotal,
                                          short* list1, short* count1, short* list2, short* count2, const char* label1,
                                          const char* label2, unsigned short /*typeCount*/, int* /*types*/,
                                          int /*reserved1*/, int /*reserved2*/) {
    const AnalysisState& state = CAnalysisDoc::StateOf(Document);
    if (!state.Services.ChooseVariables) {
        return 0;
    }
    const VariableListRequest request{TextOrNothing(title), TextOrNothing(label1), TextOrNothing(label2)};
    const std::optional<VariableLists> answer = state.Services.ChooseVariables(request);
    if (!answer) {
        return 0;
    }
    const auto& [first, second] = *answer;
    const bool allowed = Limits{lowest1, highest1}.Allow(first.size()) &&
                         Limits{lowest2, highest2}.Allow(second.size()) &&
                         Limits{0, highestTotal}.Allow(first.size() + second.size());
    if (!allowed || !AreVariables(first, state) || !AreVariables(second, state)) {
        dsplst(0,
               "The lists of variables were not accepted: they hold too few or too many entries, or a variable that "
               "isn't there.");
        return 0;
    }
    WriteList(first, list1, count1);
    WriteList(second, list2, count2);
    return 1;
}
