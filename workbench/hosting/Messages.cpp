// Messages to the user.

#include <algorithm>

#include "host/AnalysisSupport.h"
#include "resources/StringTable.h"
#include "workbench/hosting/LongTexts.h"
#include "workbench/hosting/Surroundings.h"

namespace {

/// Whether a message of an analysis is the one that its memory is lacking.
bool TellsOfMemory(std::string_view message) {
    const auto row = std::ranges::find(StringTable, int{NotEnoughMemoryText}, &StringResource::Id);
    return row != StringTable.end() && message == row->Text;
}

}  // namespace

void CAnalysisSupport::dsplst(int length, const char* text) {
    const quillara::Surroundings& around = quillara::SurroundingsOf(Document);
    const std::string_view whole(text);
    const std::string shown =
        quillara::Replace8CharGrow(length > 0 ? whole.substr(0, static_cast<std::size_t>(length)) : whole);
    TellsOfMemory(shown) ? around.SayMemoryLacked(shown) : around.ShowMessage(shown);
}
