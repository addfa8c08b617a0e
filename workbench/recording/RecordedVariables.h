#pragma once

#include <string>

class CAnalysisDialog;

namespace quillara {

/// A variable that stands in a list of the startup dialog, as its member takes it in a script: by name, or by number
/// where the name would mean another one.
[[nodiscard]] std::string PythonVariable(const CAnalysisDialog& dialog, int list, const std::string& name);

}  // namespace quillara
