#pragma once

#include <string_view>

namespace quillara {

struct AnalysisState;

/// Shows a message of the host that memory is lacking, and reports it to the services.
void SayMemoryLacked(const AnalysisState& state, std::string_view text);

/// Whether a message of an analysis is the one that its memory is lacking.
[[nodiscard]] bool TellsOfMemory(std::string_view message);

}  // namespace quillara
