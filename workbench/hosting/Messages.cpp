// Messages to the user.

#include <algorithm>

#include "host/AnalysisSupport.h"
#include "workbench/hosting/AnalysisState.h"
#include "workbench/hosting/LongTexts.h"

void CAnalysisSupport::dsplst(int length, const char* text) {
    const quillara::AnalysisState& state = quillara::StateOf(Document);
    if (state.Services.ShowMessage) {
        const std::string_view whole(text);
        const std::string_view shown = length > 0 ? whole.substr(0, static_cast<std::size_t>(length)) : whole;
        state.Services.ShowMessage(quillara::Replace8CharGrow(shown));
    }
}
