// Messages to the user.

#include <algorithm>

#include "host/AnalysisSupport.h"
#include "resources/StringTable.h"
#include "workbench/hosting/AnalysisState.h"
#include "workbench/hosting/LongTexts.h"
#include "workbench/hosting/MemoryMessages.h"

namespace quillara {
namespace {

void Show(const AnalysisState& state, std::string_view text) {
    if (state.Services.ShowMessage) {
        state.Services.ShowMessage(text);
    }
}

}  // namespace

void SayMemoryLacked(const AnalysisState& state, std::string_view text) {
    Show(state, text);
    if (state.Services.MemoryLacked) {
        state.Services.MemoryLacked();
    }
}

bool TellsOfMemory(std::string_view message) {
    const auto row = std::ranges::find(StringTable, int{NotEnoughMemoryText}, &StringResource::Id);
    return row != StringTable.end() && message == row->Text;
}

}  // namespace quillara

void CAnalysisSupport::dsplst(int length, const char* text) {
    const quillara::AnalysisState& state = quillara::StateOf(Document);
    const std::string_view whole(text);
    const std::string shown =
        quillara::Replace8CharGrow(length > 0 ? whole.substr(0, static_cast<std::size_t>(length)) : whole);
    quillara::TellsOfMemory(shown) ? quillara::SayMemoryLacked(state, shown) : quillara::Show(state, shown);
}
