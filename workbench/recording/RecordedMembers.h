#pragma once

#include <string>

class CAnalysisDialog;

namespace quillara {

/// The member of scripts that stands for a control of a dialog; empty when none does.
[[nodiscard]] std::string MemberOf(const CAnalysisDialog& dialog, int control);
/// What a script calls the result of a member: "pie_charts" of PieCharts.
[[nodiscard]] std::string ResultNameOf(const std::string& member);

}  // namespace quillara
